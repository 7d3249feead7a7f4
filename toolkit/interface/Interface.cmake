# qgtk_interface(<target> FILE <file name> PREFIX <symbol prefix> SOURCES <files...>)
#
# A loadable library under the exact file name that callers load. Nothing but the operations is exported, so that
# neither the core's names nor the C++ runtime's unique ones, which would keep the library from ever being
# unloaded, reach the process.
function(qgtk_interface target)
  cmake_parse_arguments(LIBRARY "" "FILE;PREFIX" "SOURCES" ${ARGN})
  set(script "${CMAKE_CURRENT_BINARY_DIR}/${target}.map")
  file(WRITE "${script}" "{ global: ${LIBRARY_PREFIX}*; local: *; };\n")
  add_library(${target} MODULE ${LIBRARY_SOURCES})
  set_target_properties(${target} PROPERTIES PREFIX "" OUTPUT_NAME "${LIBRARY_FILE}" SUFFIX ".so"
    LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/toolkit" LINK_DEPENDS "${script}"
    # Each source has a prefix of its own.
    UNITY_BUILD_CODE_AFTER_INCLUDE "#undef QGTK_PREFIX")
  target_link_libraries(${target} PRIVATE qgtk_core)
  target_link_options(${target} PRIVATE "-Wl,--version-script=${script}")
  # The sanitizers of clang leave their own functions to the program.
  if(NOT QUILLGATE_SANITIZE OR NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    target_link_options(${target} PRIVATE -Wl,--no-undefined)
  endif()
endfunction()
