# quillgate_test(<name> SOURCES <files...> LINK <targets...> [PRELOAD <libraries...>] [ENVIRONMENT <VAR=value...>]
#                [ARGUMENTS <arguments...>] [QT])
#
# One test program, one ctest entry. It runs under libnss_wrapper, so that a TestHome can give the process a home
# directory of its own: the user's is never touched. PRELOAD adds shims of ours behind it. QT takes Qt Test
# and the off-screen platform in place of GoogleTest.
find_library(NSS_WRAPPER nss_wrapper REQUIRED)

function(quillgate_test name)
  cmake_parse_arguments(TEST "QT" "" "SOURCES;LINK;PRELOAD;ENVIRONMENT;ARGUMENTS" ${ARGN})
  add_executable(${name} ${TEST_SOURCES})
  target_link_libraries(${name} PRIVATE ${TEST_LINK} quillgate_test_support)
  if(TEST_QT)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    target_link_libraries(${name} PRIVATE Qt5::Test Qt5::Widgets)
    list(APPEND TEST_ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
  else()
    target_link_libraries(${name} PRIVATE GTest::gmock GTest::gtest GTest::gtest_main)
  endif()
  add_test(NAME ${name} COMMAND ${name} ${TEST_ARGUMENTS})
  list(JOIN TEST_PRELOAD ":" preload)
  # The sanitizer's run-time library is found after the preloaded ones, which is harmless here.
  set_tests_properties(${name} PROPERTIES TIMEOUT 600 ENVIRONMENT
    "LD_PRELOAD=${NSS_WRAPPER}:${preload};ASAN_OPTIONS=verify_asan_link_order=0:detect_stack_use_after_return=1;UBSAN_OPTIONS=print_stacktrace=1;LC_ALL=C.UTF-8;TZ=Asia/Seoul;${TEST_ENVIRONMENT}")
endfunction()
