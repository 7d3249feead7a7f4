# quillgate_test(<name> SOURCES <files...> LINK <targets...> [PRELOAD <libraries...>] [ENVIRONMENT <VAR=value...>]
#                [ARGUMENTS <arguments...>] [QT] [OFFSCREEN])
#
# One test program, one ctest entry. It runs under libnss_wrapper, so that a TestHome can give the process a home
# directory of its own: the user's is never touched. PRELOAD adds shims of ours behind it. QT takes Qt Test
# and the off-screen platform in place of GoogleTest, OFFSCREEN the platform alone.
find_library(NSS_WRAPPER nss_wrapper REQUIRED)

# The application, at its start, makes Qt's off-screen platform, which leaves its screen behind; the stacks of Qt's
# libraries need the slow unwinder.
set(offscreen_environment "QT_QPA_PLATFORM=offscreen"
  "LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/support/qt-leaks.supp:fast_unwind_on_malloc=0:print_suppressions=0")

function(quillgate_test name)
  cmake_parse_arguments(TEST "QT;OFFSCREEN" "" "SOURCES;LINK;PRELOAD;ENVIRONMENT;ARGUMENTS" ${ARGN})
  add_executable(${name} ${TEST_SOURCES})
  target_link_libraries(${name} PRIVATE ${TEST_LINK} quillgate_test_support)
  # What is tested is optimised, the test itself need not be: half of the time that building it takes.
  target_compile_options(${name} PRIVATE "$<$<CONFIG:RelWithDebInfo>:-O0;-U_FORTIFY_SOURCE>")
  if(TEST_QT)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    target_link_libraries(${name} PRIVATE Qt5::Test Qt5::Widgets)
  else()
    target_link_libraries(${name} PRIVATE GTest::gmock GTest::gtest GTest::gtest_main)
  endif()
  if(TEST_QT OR TEST_OFFSCREEN)
    list(APPEND TEST_ENVIRONMENT ${offscreen_environment})
  endif()
  add_test(NAME ${name} COMMAND ${name} ${TEST_ARGUMENTS})
  list(JOIN TEST_PRELOAD ":" preload)
  # The sanitizer's run-time library is found after the preloaded ones, which is harmless here.
  set_tests_properties(${name} PROPERTIES TIMEOUT 600 ENVIRONMENT
    "LD_PRELOAD=${NSS_WRAPPER}:${preload};ASAN_OPTIONS=verify_asan_link_order=0:detect_stack_use_after_return=1;UBSAN_OPTIONS=print_stacktrace=1;LC_ALL=C.UTF-8;TZ=Asia/Seoul;${TEST_ENVIRONMENT}")
endfunction()
