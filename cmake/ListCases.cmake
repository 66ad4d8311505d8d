# Run by ctest for each test program, with its `name`, its `program`, and what tesk_tests() was
# told: makes every suite of the program, or every case of one that runs whole programs, a test.

set(environment QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8)
set(properties TIMEOUT 300)
if(windows)
  # They take longer than most and are listed last: the last of them would run alone.
  set(properties TIMEOUT 300 COST 10)
endif()
if(whole_programs)
  # Consoles start and end again and again, tables of large systems go at the pace of the line, and
  # a machine may be busy.  They begin first, because the longest are among them.
  set(properties TIMEOUT 900 LABELS program COST 100)
endif()

# add_case(TEST FILTER ENVIRONMENT...)
macro(add_case test filter)
  add_test("${test}" "${program}" "--gtest_filter=${filter}")
  set_tests_properties("${test}" PROPERTIES ENVIRONMENT "${ARGN}" ${properties})
endmacro()

if(NOT EXISTS "${program}")
  add_test("${name}_tests_are_not_built" "${cmake}" -E false)
  return()
endif()
execute_process(
  COMMAND "${cmake}" -E env ${environment} "${program}" --gtest_list_tests
  OUTPUT_VARIABLE listing ERROR_VARIABLE errors RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message("${program} does not list its cases: ${errors}")
  add_test("${name}_tests_do_not_start" "${cmake}" -E false)
  return()
endif()

string(REPLACE "\n" ";" listing "${listing}")
set(suite "")
foreach(line IN LISTS listing)
  string(REGEX REPLACE " *#.*$" "" line "${line}")
  if(line MATCHES "^([^ ]+)\\.$")
    set(suite "${CMAKE_MATCH_1}")
    if(NOT whole_programs)
      add_case("${name}.${suite}" "${suite}.*" ${environment})
    endif()
    list(FIND twice_the_pixels "${suite}" at)  # ctest does not know IN_LIST
    if(NOT at EQUAL -1)
      add_case("${name}.${suite}_2x" "${suite}.*" ${environment} QT_SCALE_FACTOR=2)
    endif()
  elseif(line MATCHES "^  ([^ ]+)$" AND whole_programs)
    add_case("${name}.${suite}.${CMAKE_MATCH_1}" "${suite}.${CMAKE_MATCH_1}" ${environment})
  endif()
endforeach()
