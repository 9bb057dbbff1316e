# Warnings that every target of this tree is built with; all are errors.
add_library(pm_warnings INTERFACE)
target_compile_options(pm_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Werror -Wconversion -Wsign-conversion -Wshadow -Wcast-qual -Wundef
  -Wformat=2 -Wvla -Wnull-dereference
  $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wlogical-op>
  $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual -Wextra-semi>)
