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
    add_executable(${name} ${A_SOURCES} ${CMAKE_SOURCE_DIR}/tests/support/test_main.cpp)
    target_link_libraries(${name} PRIVATE Qt6::Core)
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
  fenk_guard_test(${name})
endfunction()

# The tests run with HOME and XDG_CONFIG_HOME in empty folders of the build; a last test fails
# when anything was written there: tests, benchmarks run as tests and the host's headless tour keep
# their settings in sandboxes of their own, never in the user's configuration.
set(FENK_TEST_HOME ${CMAKE_BINARY_DIR}/user-home)

# fenk_guard_test(name): called in the folder that added the test, after its own properties.
function(fenk_guard_test name)
  set_property(TEST ${name} APPEND PROPERTY FIXTURES_REQUIRED user_home)
  # Caches (fonts, compilers) are not settings: they go beside, not into, the checked home.
  set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT
    "HOME=${FENK_TEST_HOME}/home" "XDG_CONFIG_HOME=${FENK_TEST_HOME}/config" "XDG_CACHE_HOME=${CMAKE_BINARY_DIR}/user-cache")
endfunction()

# fenk_user_home_check(): the fixture's two ends, once.
function(fenk_user_home_check)
  set(script ${CMAKE_SOURCE_DIR}/cmake/UserHome.cmake)
  add_test(NAME user_home_prepare COMMAND ${CMAKE_COMMAND} -DHOME=${FENK_TEST_HOME} -DMODE=prepare -P ${script})
  add_test(NAME user_home_untouched COMMAND ${CMAKE_COMMAND} -DHOME=${FENK_TEST_HOME} -DMODE=check -P ${script})
  set_tests_properties(user_home_prepare PROPERTIES FIXTURES_SETUP user_home)
  set_tests_properties(user_home_untouched PROPERTIES FIXTURES_CLEANUP user_home)
endfunction()
