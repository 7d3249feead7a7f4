find_library(NSS_WRAPPER nss_wrapper REQUIRED)

set(offscreen_environment "QT_QPA_PLATFORM=offscreen"
  "LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/support/qt-leaks.supp:print_suppressions=0")

# What is tested is optimised and watched for undefined behaviour; the test itself need not be, which halves the time that
# building it takes. Test programs and what they share are compiled alike, because they read one precompiled header: as -fPIC,
# which Qt asks for.
function(quillgate_test_options name)
  set_target_properties(${name} PROPERTIES POSITION_INDEPENDENT_CODE OFF)
  target_compile_options(${name} PRIVATE -fPIC
    "$<$<CONFIG:RelWithDebInfo>:-O0;-U_FORTIFY_SOURCE>" -fno-sanitize=undefined
    # In a unity build a fixture without a name for others looks as if a header held it.
    $<$<COMPILE_LANGUAGE:CXX>:-Wno-subobject-linkage>)
endfunction()

# quillgate_test_headers(<name> LINK <targets...> HEADERS <headers...>)
#
# Headers of the test frameworks, parsed once for all tests that take them.
function(quillgate_test_headers name)
  cmake_parse_arguments(PARSED "" "" "LINK;HEADERS" ${ARGN})
  file(GENERATE OUTPUT "${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp" CONTENT "")
  add_library(${name} OBJECT "${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp")
  target_link_libraries(${name} PRIVATE ${PARSED_LINK})
  quillgate_test_options(${name})
  target_precompile_headers(${name} PRIVATE ${PARSED_HEADERS})
endfunction()

# quillgate_test_library(<name> SOURCES <files...> [LINK <targets...>])
#
# What several test programs share, compiled once: its headers are found by whoever links it.
function(quillgate_test_library name)
  cmake_parse_arguments(LIBRARY "" "" "SOURCES;LINK" ${ARGN})
  add_library(${name} STATIC ${LIBRARY_SOURCES})
  target_include_directories(${name} PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}")
  target_link_libraries(${name} PUBLIC ${LIBRARY_LINK} GTest::gmock GTest::gtest)
  quillgate_test_options(${name})
  target_precompile_headers(${name} REUSE_FROM gtest_headers)
endfunction()

# quillgate_test(<name> SOURCES <files...> LINK <targets...> [PRELOAD <libraries...>] [ENVIRONMENT <VAR=value...>]
#                [ARGUMENTS <arguments...>] [QT] [OFFSCREEN])
#
# One test program, one ctest entry. It runs under libnss_wrapper, so that a TestHome can give the process a home
# directory of its own: the user's is never touched. PRELOAD adds shims of ours behind it. QT takes Qt Test
# and the off-screen platform in place of GoogleTest, OFFSCREEN the platform alone.
function(quillgate_test name)
  cmake_parse_arguments(TEST "QT;OFFSCREEN" "" "SOURCES;LINK;PRELOAD;ENVIRONMENT;ARGUMENTS" ${ARGN})
  add_executable(${name} ${TEST_SOURCES})
  target_link_libraries(${name} PRIVATE ${TEST_LINK} quillgate_test_support)
  quillgate_test_options(${name})
  if(TEST_QT)
    # Each has its one source, which includes what moc makes beside it.
    set_target_properties(${name} PROPERTIES AUTOMOC ON UNITY_BUILD OFF)
    target_link_libraries(${name} PRIVATE Qt5::Test Qt5::Widgets)
    target_precompile_headers(${name} REUSE_FROM qttest_headers)
  else()
    target_link_libraries(${name} PRIVATE GTest::gmock GTest::gtest GTest::gtest_main)
    target_precompile_headers(${name} REUSE_FROM gtest_headers)
  endif()
  if(TEST_QT OR TEST_OFFSCREEN)
    list(APPEND TEST_ENVIRONMENT ${offscreen_environment})
  endif()
  add_test(NAME ${name} COMMAND ${name} ${TEST_ARGUMENTS})
  list(JOIN TEST_PRELOAD ":" preload)
  # The sanitizer's run-time library is found after the preloaded ones, which is harmless here.
  set_tests_properties(${name} PROPERTIES TIMEOUT 900 ENVIRONMENT
    "LD_PRELOAD=${NSS_WRAPPER}:${preload};ASAN_OPTIONS=verify_asan_link_order=0:detect_stack_use_after_return=1;UBSAN_OPTIONS=print_stacktrace=1;TSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/support/tsan.supp;LC_ALL=C.UTF-8;TZ=Asia/Seoul;${TEST_ENVIRONMENT}")
endfunction()
