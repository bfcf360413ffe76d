# sorvane_add_tests(<room> LIBRARIES lib… SOURCES file… [MAIN file] [SERIAL])
#
# Builds test_<room> from googletest sources and registers every test as a ctest entry of its own with the room as
# label. Discovery happens when ctest runs, so building needs no display. SERIAL keeps the room's tests from running
# beside each other: windows on one display compete for the focus.
include(GoogleTest)

function(sorvane_add_tests room)
  cmake_parse_arguments(arg "SERIAL" "MAIN" "LIBRARIES;SOURCES" ${ARGN})
  set(target test_${room})
  add_executable(${target} ${arg_SOURCES})
  target_link_libraries(${target} PRIVATE sorvane_flags ${arg_LIBRARIES} GTest::gmock)
  if(arg_MAIN)
    target_sources(${target} PRIVATE ${arg_MAIN})
  else()
    target_link_libraries(${target} PRIVATE GTest::gtest_main)
  endif()
  set(timeout 120)
  if(SORVANE_SANITIZE)
    set(timeout 360)
  endif()
  set(properties LABELS ${room} TIMEOUT ${timeout})
  if(arg_SERIAL)
    list(APPEND properties RESOURCE_LOCK display)
  endif()
  gtest_discover_tests(${target} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60 TEST_PREFIX "${room}." PROPERTIES ${properties})
endfunction()
