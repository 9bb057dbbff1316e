# Run by cpack between staging and packing: what the machine's own packages bring does not come again,
# and the program has a name of its own.
set(stage ${CPACK_TEMPORARY_DIRECTORY})
file(REMOVE_RECURSE ${stage}/development/usr/include ${stage}/development/usr/share
  ${stage}/tools/usr/share)
file(RENAME ${stage}/tools/usr/bin/pmnode ${stage}/tools/usr/bin/pmnode32)
