// Export macro: the only place outside platform/win32 and platform/posix that asks for the system.
#pragma once

#if defined(_WIN32)
#if defined(ZTOK_BUDOWA)
#define ZTOK_API __declspec(dllexport)
#else
#define ZTOK_API __declspec(dllimport)
#endif
// One copy in every module that uses it, never shared between modules.
#define ZTOK_LOKALNE
// Of an application's own, for all its modules.
#define ZTOK_WSPOLNE
#else
#define ZTOK_API __attribute__((visibility("default")))
#define ZTOK_LOKALNE __attribute__((visibility("hidden")))
#define ZTOK_WSPOLNE __attribute__((visibility("default")))
#endif
