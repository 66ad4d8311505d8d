# The project's few kinds of target, so that every folder declares them the same way.

add_library(tesk_options INTERFACE)
target_include_directories(tesk_options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(tesk_options INTERFACE -Wall -Wextra -Wshadow -Wnon-virtual-dtor
                                              -Woverloaded-virtual)
target_compile_definitions(tesk_options INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_KEYWORDS)
if(TESK_WERROR)
  target_compile_options(tesk_options INTERFACE -Werror)
endif()

# What the product is built with besides.  Its tests do without the checks for undefined
# behaviour, which double the time that their many assertions take to compile.
add_library(tesk_product_options INTERFACE)
target_link_libraries(tesk_product_options INTERFACE tesk_options)
if(TESK_SANITIZE)
  target_compile_options(tesk_options INTERFACE -fsanitize=address)
  target_compile_definitions(tesk_options INTERFACE TESK_SANITIZED)
  target_compile_options(tesk_product_options INTERFACE -fsanitize=undefined
                                                        -fno-sanitize-recover=undefined)
  target_link_options(tesk_options INTERFACE -fsanitize=address,undefined)
endif()
if(CMAKE_BUILD_TYPE STREQUAL "Debug")
  # Many large programs are linked: the quick linker, where there is one, saves a minute.
  include(CheckLinkerFlag)
  check_linker_flag(CXX -fuse-ld=lld TESK_HAS_LLD)
  if(TESK_HAS_LLD)
    target_link_options(tesk_options INTERFACE -fuse-ld=lld)
  endif()
endif()
if(TESK_FUZZ)
  target_compile_options(tesk_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# tesk_compile_together(TARGET): with TESK_UNITY the sources of a folder are compiled together, so
# that what they all include is read once.  A main function stays alone: who brings another one
# leaves it in its library.
function(tesk_compile_together target)
  set_target_properties(${target} PROPERTIES UNITY_BUILD ${TESK_UNITY} UNITY_BUILD_MODE GROUP)
  get_target_property(sources ${target} SOURCES)
  foreach(source ${sources})
    get_filename_component(folder ${source} DIRECTORY)
    if(source MATCHES "main\\.cpp$")
      set_source_files_properties(${source} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
    else()
      set_source_files_properties(${source} PROPERTIES UNITY_GROUP "of_${folder}")
    endif()
  endforeach()
endfunction()

# tesk_read_toolkit_once(TARGET): with TESK_UNITY the toolkit's headers, which take longer to read than
# most windows, are read once for all targets of windows; not by GCC, which needs as long to keep them
# as it then saves.
function(tesk_read_toolkit_once target)
  if(NOT TESK_UNITY OR NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    return()
  endif()
  get_property(first GLOBAL PROPERTY TESK_FIRST_TARGET_OF_WINDOWS)
  if(first)
    target_precompile_headers(${target} REUSE_FROM ${first})
  else()
    target_precompile_headers(${target} PRIVATE <QtWidgets/QtWidgets>)
    set_property(GLOBAL PROPERTY TESK_FIRST_TARGET_OF_WINDOWS ${target})
  endif()
endfunction()

# tesk_library(NAME [MOC] [WINDOWS] [COMPUTES] SOURCES a.cpp b.cpp LINKS other...): a static library
# of one folder.
#   MOC       the toolkit's generators look through it, for signals and for resource files
#   WINDOWS   it shares the toolkit's headers: tesk_read_toolkit_once()
#   COMPUTES  its tests compute so much that optimising it, where all is built for the tests alone,
#             saves more time than it takes; of other libraries it would not
function(tesk_library name)
  cmake_parse_arguments(ARG "MOC;WINDOWS;COMPUTES" "" "SOURCES;LINKS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE tesk_product_options PUBLIC tesk_options ${ARG_LINKS})
  set_target_properties(${name} PROPERTIES AUTOMOC ${ARG_MOC} AUTORCC ${ARG_MOC})
  if(TESK_UNITY AND CMAKE_BUILD_TYPE STREQUAL "Debug" AND ARG_COMPUTES)
    target_compile_options(${name} PRIVATE -O1)
  endif()
  tesk_compile_together(${name})
  if(ARG_WINDOWS)
    tesk_read_toolkit_once(${name})
  endif()
endfunction()

# All programs, without tests and benchmarks.
add_custom_target(programs)

# What the tests need that run whole programs: they wait most of their time, in which the others can be
# built.
add_custom_target(whole_program_tests DEPENDS programs)

# tesk_program(NAME [MOC] [WINDOWS] SOURCES main.cpp LINKS tesk_x...): a program in bin/, with the
# words of tesk_library().
function(tesk_program name)
  cmake_parse_arguments(ARG "MOC;WINDOWS" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE tesk_product_options ${ARG_LINKS})
  set_target_properties(${name} PROPERTIES AUTOMOC ${ARG_MOC})
  if(ARG_WINDOWS)
    tesk_read_toolkit_once(${name})
  endif()
  add_dependencies(programs ${name})
endfunction()

# tesk_tool(NAME SOURCES main.cpp LINKS tesk_x...): a program in bin/ for those who work on this
# one: a long run, a benchmark, the gallery.  Without TESK_TOOLS it is built when it is named.
function(tesk_tool name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  if(NOT TESK_TOOLS)
    set_target_properties(${name} PROPERTIES EXCLUDE_FROM_ALL TRUE)
  endif()
  target_link_libraries(${name} PRIVATE tesk_options ${ARG_LINKS})
endfunction()

# What is under test is built as it is shipped; the code that tests it need not be quick, and
# not optimising it saves minutes of every build.  Position-independent, as the toolkit wants it,
# so that tests with and without the toolkit can use the same precompiled headers.
function(tesk_quick_to_compile name)
  if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(${name} PRIVATE -O0 -fPIC)
  endif()
  # A failed assertion says its line itself, and a report of the sanitizers those of the product.
  if(TESK_SANITIZE)
    target_compile_options(${name} PRIVATE -g0)
  endif()
  tesk_compile_together(${name})
endfunction()

# tesk_test_library(tesk_x_support [WINDOWS] SOURCES a.cpp LINKS tesk_x...): what tests share.
# With WINDOWS the toolkit's headers are read once for it and for the tests of windows.
function(tesk_test_library name)
  cmake_parse_arguments(ARG "WINDOWS" "" "SOURCES;LINKS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC tesk_options ${ARG_LINKS})
  if(ARG_WINDOWS)
    tesk_quick_to_compile(${name})
    target_precompile_headers(${name} REUSE_FROM tesk_window_test_headers)
  else()
    # Benchmarks have them, too: of a template that both instantiate the linker takes one.
    set_target_properties(${name} PROPERTIES POSITION_INDEPENDENT_CODE ON)
    tesk_compile_together(${name})
  endif()
endfunction()

# tesk_tests(NAME [WINDOWS] [PROGRAMS] [TWICE_THE_PIXELS Suite...] SOURCES a_test.cpp...
#            LINKS tesk_x...)
# The tests of a folder: one program NAME_tests, and each of its suites a test NAME.Suite.  They run
# without a display.
#   WINDOWS           they have tesk_views_test_support, and the toolkit's headers are read once
#   PROGRAMS          they run whole programs: ctest -L program picks them, each case of them is a
#                     test of its own, because most of its time is waiting
#   TWICE_THE_PIXELS  these suites run again on a screen with twice the pixels
function(tesk_tests name)
  cmake_parse_arguments(ARG "WINDOWS;PROGRAMS" "" "TWICE_THE_PIXELS;SOURCES;LINKS" ${ARGN})
  set(program ${name}_tests)
  set(headers tesk_test_headers)
  if(ARG_WINDOWS)
    set(headers tesk_window_test_headers)
    list(APPEND ARG_LINKS tesk_views_test_support)
  endif()
  add_executable(${program} ${ARG_SOURCES})
  tesk_quick_to_compile(${program})
  target_precompile_headers(${program} REUSE_FROM ${headers})
  target_link_libraries(${program} PRIVATE tesk_options ${ARG_LINKS} tesk_test_support GTest::gmock)
  target_compile_definitions(${program} PRIVATE TESK_TEST_DATA="${CMAKE_SOURCE_DIR}/tests/data")

  if(ARG_PROGRAMS)
    add_dependencies(whole_program_tests ${program})
  endif()

  # Which suites there are only the program knows, once it is built: ctest asks it.
  set(list ${CMAKE_CURRENT_BINARY_DIR}/${name}_cases.cmake)
  file(GENERATE OUTPUT ${list} CONTENT "
set(cmake [==[${CMAKE_COMMAND}]==])
set(name ${name})
set(program [==[$<TARGET_FILE:${program}>]==])
set(whole_programs ${ARG_PROGRAMS})
set(windows ${ARG_WINDOWS})
set(twice_the_pixels ${ARG_TWICE_THE_PIXELS})
include([==[${CMAKE_SOURCE_DIR}/cmake/ListCases.cmake]==])
")
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${list})
endfunction()

# tesk_program_test(NAME COMMAND...): a test that runs whole programs and is no program of suites.
function(tesk_program_test name)
  add_test(NAME ${name} COMMAND ${ARGN})
  set_tests_properties(${name} PROPERTIES TIMEOUT 900 LABELS program COST 100)
endfunction()

# tesk_long_run_test(NAME COMMAND...): the same for the quick form of a long run, which is a tool.
# Together they take as long as a quarter of all other tests: `./test.sh` leaves them to
# `./test.sh --all`.
function(tesk_long_run_test name)
  if(TESK_TOOLS)
    tesk_program_test(${name} ${ARGN})
  endif()
endfunction()

# tesk_fuzz(frame_fuzz tesk_switcher): builds frame_fuzz.cpp of the current folder.  With
# TESK_FUZZ it is a libFuzzer program; otherwise, and in the test suite, it replays the files
# of corpus/<name>/ once each, so that the harness and what it found before cannot rot.
function(tesk_fuzz name)
  add_executable(${name} ${name}.cpp)
  target_link_libraries(${name} PRIVATE tesk_product_options ${ARGN})
  if(TESK_FUZZ)
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  else()
    target_link_libraries(${name} PRIVATE tesk_fuzz_replay)
    add_test(NAME ${name}_replay COMMAND ${name} ${CMAKE_CURRENT_SOURCE_DIR}/corpus/${name})
    set_tests_properties(${name}_replay PROPERTIES TIMEOUT 300)
  endif()
endfunction()
