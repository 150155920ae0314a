# Runs a program with a file as its input and compares what it prints with another file, line ends aside:
# cmake -DPROGRAM=... -DEMULATOR=... -DWEJSCIE=... -DWZOR=... -P PorownajWyjscie.cmake
execute_process(
    COMMAND ${EMULATOR} ${PROGRAM} INPUT_FILE ${WEJSCIE} OUTPUT_VARIABLE wyjscie RESULT_VARIABLE wynik)
file(READ ${WZOR} wzor)
string(REPLACE "\r" "" wyjscie "${wyjscie}")
string(REPLACE "\r" "" wzor "${wzor}")
if(NOT wynik EQUAL 0 OR NOT "${wyjscie}" STREQUAL "${wzor}")
    message(FATAL_ERROR "Ended with ${wynik}. Printed:\n${wyjscie}")
endif()
