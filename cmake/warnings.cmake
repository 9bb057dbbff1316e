# Warnings that every target of this tree is built with; all are errors of the compiler that builds
# it. Clang, which only counts and fuzzes, warns of more.
add_library(pm_warnings INTERFACE)
target_compile_options(pm_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wcast-qual -Wundef
  -Wformat=2 -Wvla -Wnull-dereference
  $<$<CXX_COMPILER_ID:GNU>:-Werror -Wduplicated-cond -Wlogical-op>
  $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual -Wextra-semi>)
