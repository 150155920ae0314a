# What every target of the project has: warnings, hidden symbols.
function(ztok_ustaw cel)
    target_compile_options(
        ${cel}
        PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-Wall
                -Wextra
                -Wpedantic
                -Wconversion
                -Wshadow
                $<$<BOOL:${ZTOK_OSTRZEZENIA_JAKO_BLEDY}>:-Werror>>)
    set_target_properties(${cel} PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
endfunction()

# Every sub-folder of `folder` with sources becomes a program of its name, put into `gdzie`; further arguments are
# libraries. The names are in `ztok_nazwy` then.
function(ztok_programy folder gdzie)
    # Depth in the pattern, so that a new sub-folder is noticed too.
    file(GLOB pliki RELATIVE ${PROJECT_SOURCE_DIR}/${folder} CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*/*.cpp)
    list(TRANSFORM pliki REPLACE "/.*" "" OUTPUT_VARIABLE nazwy)
    list(REMOVE_DUPLICATES nazwy)
    foreach(nazwa IN LISTS nazwy)
        set(zrodla ${pliki})
        list(FILTER zrodla INCLUDE REGEX "^${nazwa}/")
        list(TRANSFORM zrodla PREPEND ${PROJECT_SOURCE_DIR}/${folder}/)
        add_executable(${nazwa} ${zrodla})
        ztok_ustaw(${nazwa})
        target_link_libraries(${nazwa} PRIVATE ztok::ztok Threads::Threads ${ARGN})
        set_target_properties(${nazwa} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${gdzie})
    endforeach()
    set(ztok_nazwy ${nazwy} PARENT_SCOPE)
endfunction()

# Copies the compiler's runtime DLLs, and puts their paths into the variable. All modules of a process share one libgcc,
# or no exception crosses from one to another.
function(ztok_biblioteki_uruchomieniowe gdzie wynik)
    set(${wynik})
    foreach(nazwa libgcc_s_dw2-1.dll libstdc++-6.dll libwinpthread-1.dll)
        execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${nazwa} OUTPUT_VARIABLE plik
                        OUTPUT_STRIP_TRAILING_WHITESPACE)
        if(NOT IS_ABSOLUTE "${plik}")
            message(FATAL_ERROR "The compiler does not know where its ${nazwa} is")
        endif()
        file(COPY ${plik} DESTINATION ${gdzie})
        list(APPEND ${wynik} ${plik})
    endforeach()
    set(${wynik} ${${wynik}} PARENT_SCOPE)
endfunction()
