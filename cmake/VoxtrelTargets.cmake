# One function for each kind of target: warnings, standard and include path come from here.

option(VOXTREL_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

if(WIN32)
  set(VOXTREL_PROGRAM_DIR ${CMAKE_BINARY_DIR}/voxtrel)
  add_compile_definitions(UNICODE _UNICODE)
  add_link_options(-static -static-libgcc -static-libstdc++)
  enable_language(RC)
  set(VOXTREL_WINDOWS_RESOURCES ${CMAKE_BINARY_DIR}/voxtrel.rc)
  set(VOXTREL_WINDOWS_ICON ${CMAKE_BINARY_DIR}/voxtrel.ico)
  configure_file(${CMAKE_SOURCE_DIR}/packaging/windows/voxtrel.rc.in ${VOXTREL_WINDOWS_RESOURCES} @ONLY)
else()
  set(VOXTREL_PROGRAM_DIR ${CMAKE_BINARY_DIR})
endif()

add_library(voxtrel_warnings INTERFACE)
target_compile_options(voxtrel_warnings INTERFACE
  $<$<COMPILE_LANGUAGE:C,CXX>:-Wall;-Wextra;-Wpedantic;-Wshadow> $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor>)
target_include_directories(voxtrel_warnings INTERFACE ${CMAKE_SOURCE_DIR})
if(VOXTREL_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(VOXTREL_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined)
  add_link_options(-fsanitize=address,undefined)
endif()

# Headers that a library without windows must not see. Each name becomes a header that stops the build; the
# folder stands first on the include path of such a library.
set(_forbidden_dir ${CMAKE_BINARY_DIR}/forbidden-headers)
foreach(_header IN ITEMS windows.h winuser.h winsock2.h objbase.h ole2.h oleacc.h wx/wx.h wx/string.h wx/window.h
                         wx/app.h wx/defs.h X11/Xlib.h xcb/xcb.h gtk/gtk.h gdk/gdk.h glib.h atspi/atspi.h
                         unistd.h fcntl.h dlfcn.h sys/socket.h sys/file.h sys/stat.h)
  set(_stop "#error \"<${_header}> is a header of the system or of wx: this library must not see it\"\n")
  if(_header STREQUAL "unistd.h" AND NOT WIN32)
    # The C++ library includes this one itself, once, for its atomics.
    set(_stop "#pragma GCC system_header
#if defined(_GLIBCXX_ATOMIC_WAIT_H) && !defined(VOXTREL_UNISTD_INCLUDED)
#define VOXTREL_UNISTD_INCLUDED
#include_next <unistd.h>
#else
${_stop}#endif
")
  endif()
  file(CONFIGURE OUTPUT ${_forbidden_dir}/${_header} CONTENT "${_stop}")
endforeach()

# A library of plain C++: no wx, no system headers.
function(voxtrel_pure_library name)
  add_library(${name} STATIC ${ARGN})
  target_link_libraries(${name} PUBLIC voxtrel_warnings)
  target_include_directories(${name} BEFORE PRIVATE ${_forbidden_dir})
endfunction()

# A library that may use wx or the system.
function(voxtrel_system_library name)
  add_library(${name} STATIC ${ARGN})
  target_link_libraries(${name} PUBLIC voxtrel_warnings)
endfunction()

function(voxtrel_program name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE voxtrel_warnings)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${VOXTREL_PROGRAM_DIR})
  set_property(GLOBAL APPEND PROPERTY VOXTREL_PROGRAMS ${name})
endfunction()

# A program with windows: Windows gives it no console, and finds icon, manifest and version in it.
function(voxtrel_windowed_program name)
  voxtrel_program(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE voxtrel_wx)
  if(WIN32)
    set_target_properties(${name} PROPERTIES WIN32_EXECUTABLE ON)
    target_sources(${name} PRIVATE ${VOXTREL_WINDOWS_RESOURCES})
    add_dependencies(${name} voxtrel_icon)
  endif()
endfunction()

# A test program; every test in it becomes a ctest of its own.
function(voxtrel_test name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE voxtrel_warnings GTest::gtest_main)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  if(WIN32)
    # One wine process a test would take minutes: the whole program is one ctest.
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES TIMEOUT 300)
  else()
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 300)
  endif()
endfunction()

# A test program for windows: a wx application that runs the tests from within, as one ctest, on a display of its
# own.
function(voxtrel_window_test name)
  add_executable(${name} ${CMAKE_SOURCE_DIR}/tests/windows/window_test_main.cpp ${ARGN})
  target_link_libraries(${name} PRIVATE voxtrel_warnings voxtrel_wx GTest::gtest)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  if(WIN32)
    target_sources(${name} PRIVATE ${VOXTREL_WINDOWS_RESOURCES})
    add_dependencies(${name} voxtrel_icon)
    # The windows of one Wine home share one desktop, which stays on the display where it was opened.
    add_test(NAME ${name} COMMAND ${CMAKE_SOURCE_DIR}/tests/with-display ${CMAKE_SOURCE_DIR}/packaging/windows/wine
                                  --close ${CMAKE_BINARY_DIR}/wine-windows $<TARGET_FILE:${name}>)
    set_tests_properties(${name} PROPERTIES RESOURCE_LOCK wine-windows)
  else()
    add_test(NAME ${name} COMMAND ${CMAKE_SOURCE_DIR}/tests/with-display $<TARGET_FILE:${name}>)
  endif()
  # Keys that are held and pointers that are moved are no good on a machine that is busy with something else.
  set_tests_properties(${name} PROPERTIES TIMEOUT 300 LABELS window RUN_SERIAL ON)
endfunction()

function(voxtrel_bench name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE voxtrel_warnings benchmark::benchmark benchmark::benchmark_main)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bench)
endfunction()

# Goal of the fuzz preset.
if(VOXTREL_FUZZ)
  add_custom_target(fuzzers)
endif()

# A libFuzzer program from FILE with LLVMFuzzerTestOneInput; without the fuzz preset the same file is linked
# to a small main that runs the regression inputs, as an ordinary test.
function(voxtrel_fuzz name source)
  if(VOXTREL_FUZZ)
    add_executable(${name} ${source})
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    add_dependencies(fuzzers ${name})
  else()
    add_executable(${name} ${source} ${CMAKE_SOURCE_DIR}/tests/fuzz/replay_main.cpp)
    add_test(NAME ${name} COMMAND ${name} ${CMAKE_SOURCE_DIR}/tests/fuzz/corpus/${name})
    set_tests_properties(${name} PROPERTIES TIMEOUT 300)
  endif()
  target_link_libraries(${name} PRIVATE voxtrel_warnings ${ARGN})
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/fuzz)
endfunction()
