# Shared build helpers.

# Our own code builds warning-free with these.
set(FENK_WARNINGS -Wall -Wextra -Wpedantic)

function(fenk_add_optional_subdirectory dir)
  if(EXISTS ${CMAKE_SOURCE_DIR}/${dir}/CMakeLists.txt)
    add_subdirectory(${CMAKE_SOURCE_DIR}/${dir} ${CMAKE_BINARY_DIR}/${dir})
  endif()
endfunction()

# fenk_library(name SOURCES ... LIBS ...): a static, position-independent layer library.
function(fenk_library name)
  cmake_parse_arguments(A "" "" "SOURCES;LIBS" ${ARGN})
  add_library(${name} STATIC ${A_SOURCES})
  target_compile_options(${name} PRIVATE ${FENK_WARNINGS})
  target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC ${A_LIBS})
endfunction()

# fenk_test(name [GUI] SOURCES ... LIBS ... [LABELS ...]): one GoogleTest binary run by CTest.
# GUI tests get a main that makes one QApplication on the offscreen platform.
# Tests run from the source root, so ../shared/nmea-captures is found where it lies.
function(fenk_test name)
  cmake_parse_arguments(A "GUI" "TIMEOUT" "SOURCES;LIBS;LABELS" ${ARGN})
  if(A_GUI)
    add_executable(${name} ${A_SOURCES} ${CMAKE_SOURCE_DIR}/tests/support/gui_main.cpp)
    target_link_libraries(${name} PRIVATE uikit Qt6::Widgets)
  else()
    add_executable(${name} ${A_SOURCES})
    target_link_libraries(${name} PRIVATE GTest::gtest_main)
  endif()
  target_compile_options(${name} PRIVATE ${FENK_WARNINGS})
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE ${A_LIBS} GTest::gtest GTest::gmock Threads::Threads)
  if(NOT A_TIMEOUT)
    set(A_TIMEOUT 300)
  endif()
  add_test(NAME ${name} COMMAND ${name} WORKING_DIRECTORY ${CMAKE_SOURCE_DIR})
  set_tests_properties(${name} PROPERTIES TIMEOUT ${A_TIMEOUT}
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;FENK_SHARED_DIR=${CMAKE_SOURCE_DIR}/../shared;FENK_BUILD_DIR=${CMAKE_BINARY_DIR}"
    LABELS "${A_LABELS}")
endfunction()
