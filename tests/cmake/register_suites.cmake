# Run after a test program is linked: writes the file that registers each of its suites with ctest, one entry a suite.
# One process a suite and not one a test, since most tests are shorter than the start of a process.
#   cmake -D PROGRAM=<path> -D PREFIX=<folder> -D OUTPUT=<file> -P register_suites.cmake
execute_process(COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen ${PROGRAM} --gtest_list_tests
                OUTPUT_VARIABLE listing RESULT_VARIABLE result TIMEOUT 60)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "${PROGRAM} does not list its tests: ${result}")
endif()

# A line that starts at the margin is a suite ("Suite." or "Instance/Suite.  # TypeParam = ..."), an indented one a test.
string(REGEX MATCHALL "[^\n]+" lines "${listing}")
set(script "")
foreach(line IN LISTS lines)
  if(line MATCHES "^([A-Za-z0-9_/]+)\\.( |$)")
    set(suite ${CMAKE_MATCH_1})
    string(APPEND script
      "add_test([=[${PREFIX}.${suite}]=] [=[${PROGRAM}]=] [=[--gtest_filter=${suite}.*]=] --gtest_brief=0)\n"
      "set_tests_properties([=[${PREFIX}.${suite}]=] PROPERTIES TIMEOUT 120 ENVIRONMENT QT_QPA_PLATFORM=offscreen)\n")
  endif()
endforeach()
file(WRITE ${OUTPUT} "${script}")
