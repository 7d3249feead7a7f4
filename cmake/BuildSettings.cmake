# Compiler settings that every target shares, and the way a layer of the library is declared.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

find_program(CCACHE ccache)
if(CCACHE)
  # A precompiled header stands for its macros and its time: ccache has to be told that this is fine.
  set(launcher "${CMAKE_COMMAND}" -E env CCACHE_SLOPPINESS=pch_defines,time_macros "${CCACHE}")
  set(CMAKE_C_COMPILER_LAUNCHER ${launcher})
  set(CMAKE_CXX_COMPILER_LAUNCHER ${launcher})
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wformat=2 -Wundef -Werror)
add_compile_options("$<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor;-Woverloaded-virtual>")
add_compile_options(-fstack-protector-strong)
add_link_options(-Wl,-z,relro,-z,now)

set(QUILLGATE_SANITIZE "" CACHE STRING "Sanitizers to build with, as in -fsanitize=")
if(QUILLGATE_SANITIZE)
  add_compile_options("-fsanitize=${QUILLGATE_SANITIZE}" -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options("-fsanitize=${QUILLGATE_SANITIZE}")
else()
  # The fortified string functions and the sanitizers get in each other's way.
  add_compile_options("$<$<CONFIG:RelWithDebInfo>:-D_FORTIFY_SOURCE=2>")
endif()

# quillgate_layer(<target> BELOW <targets...> SOURCES <files...>)
#
# One layer of the library: a static library of a folder's sources. BELOW names the layers that it may
# include and call; nothing else is on its include path, so that a call upwards does not compile.
function(quillgate_layer target)
  cmake_parse_arguments(LAYER "" "" "BELOW;SOURCES" ${ARGN})
  add_library(${target} STATIC ${LAYER_SOURCES})
  target_include_directories(${target} PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}")
  target_link_libraries(${target} PUBLIC ${LAYER_BELOW})
endfunction()
