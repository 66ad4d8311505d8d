# The project's few kinds of target, so that every folder declares them the same way.

add_library(tesk_options INTERFACE)
target_include_directories(tesk_options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(tesk_options INTERFACE -Wall -Wextra -Wshadow -Wnon-virtual-dtor
                                              -Woverloaded-virtual)
target_compile_definitions(tesk_options INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_KEYWORDS)
if(TESK_WERROR)
  target_compile_options(tesk_options INTERFACE -Werror)
endif()
if(TESK_SANITIZE)
  target_compile_options(tesk_options INTERFACE -fsanitize=address,undefined
                                                -fno-sanitize-recover=undefined)
  target_link_options(tesk_options INTERFACE -fsanitize=address,undefined)
  # Hundreds of large programs: the quick linker, where there is one, saves minutes.
  include(CheckLinkerFlag)
  check_linker_flag(CXX -fuse-ld=gold TESK_HAS_GOLD)
  if(TESK_HAS_GOLD AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_link_options(tesk_options INTERFACE -fuse-ld=gold)
  endif()
endif()
if(TESK_FUZZ)
  target_compile_options(tesk_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# tesk_library(NAME [MOC] SOURCES a.cpp b.cpp LINKS other...): a static library of one folder.
# With MOC the toolkit's generators look through it, for signals and for resource files.
function(tesk_library name)
  cmake_parse_arguments(ARG "MOC" "" "SOURCES;LINKS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC tesk_options ${ARG_LINKS})
  set_target_properties(${name} PROPERTIES AUTOMOC ${ARG_MOC} AUTORCC ${ARG_MOC})
endfunction()

# tesk_windows(NAME): the sources of this library include much of the toolkit's windows.
function(tesk_windows name)
  if(TESK_PRECOMPILE)
    target_precompile_headers(${name} PRIVATE <QtWidgets/QtWidgets>)
  endif()
endfunction()

# All programs and the tests that run them, without the tests of single units.
add_custom_target(programs)

# tesk_program(NAME [MOC] SOURCES main.cpp LINKS tesk_x...): a program in bin/.
function(tesk_program name)
  cmake_parse_arguments(ARG "MOC" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE tesk_options ${ARG_LINKS})
  set_target_properties(${name} PROPERTIES AUTOMOC ${ARG_MOC})
  add_dependencies(programs ${name})
endfunction()

# tesk_gallery(NAME SOURCES main.cpp LINKS tesk_x...): a program that draws pictures for somebody
# to look at.  The sanitizers see the same code in the tests.
function(tesk_gallery name)
  tesk_program(${name} ${ARGN})
  if(TESK_SANITIZE)
    set_target_properties(${name} PROPERTIES EXCLUDE_FROM_ALL TRUE)
  endif()
endfunction()

# What is under test is built as it is shipped; the code that tests it need not be quick, and
# not optimising it saves minutes of every build.  Position-independent, as the toolkit wants it,
# so that tests with and without the toolkit can use the same precompiled headers.
function(tesk_quick_to_compile name)
  if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(${name} PRIVATE -O0 -fPIC)
  endif()
endfunction()

# tesk_test_library(tesk_x_support SOURCES a.cpp LINKS tesk_x...): what tests of windows share.
function(tesk_test_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  tesk_library(${name} SOURCES ${ARG_SOURCES} LINKS ${ARG_LINKS})
  tesk_quick_to_compile(${name})
  target_precompile_headers(${name} REUSE_FROM tesk_window_test_headers)
endfunction()

# tesk_test(frame_test tesk_switcher): builds frame_test.cpp of the current folder with
# GoogleTest and registers it.  It runs without a display.
function(tesk_test name)
  tesk_test_with_headers(${name} tesk_test_headers ${ARGN})
endfunction()

# tesk_window_test(find_field_test tesk_x): the same for a test of windows, which has
# tesk_views_test_support besides what it names.
function(tesk_window_test name)
  tesk_test_with_headers(${name} tesk_window_test_headers tesk_views_test_support ${ARGN})
endfunction()

function(tesk_test_with_headers name headers)
  add_executable(${name} ${name}.cpp)
  if(TESK_TESTS_WHOLE_PROGRAMS)
    add_dependencies(programs ${name})
  endif()
  tesk_quick_to_compile(${name})
  target_precompile_headers(${name} REUSE_FROM ${headers})
  target_link_libraries(${name} PRIVATE tesk_options ${ARGN} tesk_test_support GTest::gmock)
  target_compile_definitions(${name} PRIVATE TESK_TEST_DATA="${CMAKE_SOURCE_DIR}/tests/data")
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 300
                       ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8")
endfunction()

# tesk_tests_whole_programs(): the tests of this folder run programs as they are shipped, and
# ctest -L program picks them.
macro(tesk_tests_whole_programs)
  set(TESK_TESTS_WHOLE_PROGRAMS TRUE)
  set_directory_properties(PROPERTIES LABELS program)
endmacro()

# tesk_fuzz(frame_fuzz tesk_switcher): builds frame_fuzz.cpp of the current folder.  With
# TESK_FUZZ it is a libFuzzer program; otherwise, and in the test suite, it replays the files
# of corpus/<name>/ once each, so that the harness and what it found before cannot rot.
function(tesk_fuzz name)
  add_executable(${name} ${name}.cpp)
  target_link_libraries(${name} PRIVATE tesk_options ${ARGN})
  if(TESK_FUZZ)
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  else()
    target_sources(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests/fuzz/replay_main.cpp)
    add_test(NAME ${name}_replay COMMAND ${name} ${CMAKE_CURRENT_SOURCE_DIR}/corpus/${name})
    set_tests_properties(${name}_replay PROPERTIES TIMEOUT 300)
  endif()
endfunction()
