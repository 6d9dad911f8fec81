# Runs PROG in DIR and compares what it printed with the file EXPECTED:
#   the standard output, then (if any) a line "--- stderr ---" and the
#   standard error, then (if non-zero) a line "--- exit status N ---".
# Lines that describe the build machine (compiler versions, kernel, date)
# are replaced by "<build detail>" first, so that the identification block
# can be compared too.
file(REMOVE_RECURSE ${DIR})
file(MAKE_DIRECTORY ${DIR})
# ZEM_RUN_PREFIX in the environment (for example a valgrind command line)
# runs the program under that tool.
separate_arguments(prefix UNIX_COMMAND "$ENV{ZEM_RUN_PREFIX}")
execute_process(COMMAND ${prefix} ${PROG} WORKING_DIRECTORY ${DIR}
  OUTPUT_VARIABLE out ERROR_VARIABLE err RESULT_VARIABLE rc)
set(actual "${out}")
if(NOT err STREQUAL "")
  string(APPEND actual "--- stderr ---\n${err}")
endif()
if(NOT rc STREQUAL "0")
  string(APPEND actual "--- exit status ${rc} ---\n")
endif()
string(REGEX REPLACE "(op. sys. - |compiler - |build date - |64-bit, with )[^\n]*" "\\1<build detail>" actual "${actual}")
file(WRITE ${DIR}/actual.txt "${actual}")
if(NOT EXISTS ${EXPECTED})
  message(FATAL_ERROR "no expected output ${EXPECTED} (actual output in ${DIR}/actual.txt)")
endif()
file(READ ${EXPECTED} expected)
if(NOT actual STREQUAL expected)
  execute_process(COMMAND diff -u ${EXPECTED} ${DIR}/actual.txt)
  message(FATAL_ERROR "output differs from ${EXPECTED} (actual output in ${DIR}/actual.txt)")
endif()
