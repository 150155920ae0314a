# Read by ctest when it starts: declares one test per suite of the GoogleTest program `program`.
execute_process(COMMAND ${emulator} ${program} --gtest_list_tests WORKING_DIRECTORY ${katalog}
                OUTPUT_VARIABLE lista ERROR_VARIABLE blad RESULT_VARIABLE wynik TIMEOUT 120)
# A program that does not even start is one failed test, never none.
if(NOT wynik STREQUAL 0)
    message("${program} --gtest_list_tests: ${wynik}\n${blad}")
    add_test(ztok_testy "${CMAKE_COMMAND}" -E false)
    return()
endif()
string(REGEX MATCHALL "(^|\n)[^ \n][^\n]*\\.[ \r#\n]" zestawy "\n${lista}\n")
foreach(zestaw IN LISTS zestawy)
    string(REGEX REPLACE "^\n?([^ \r\n]+)\\..*" "\\1" zestaw "${zestaw}")
    add_test(${zestaw} ${emulator} ${program} "--gtest_filter=${zestaw}.*" --gtest_brief=1)
    set_tests_properties(${zestaw} PROPERTIES WORKING_DIRECTORY "${katalog}" TIMEOUT 300)
endforeach()
