# 32-bit x86 with Debian's multilib compiler. The kernel's asm/ headers are in the 64-bit folder:
# the package that links them into /usr/include does not install beside a cross compiler.
foreach(language C CXX)
  set(CMAKE_${language}_FLAGS_INIT "-m32 -msse2 -mfpmath=sse -idirafter /usr/include/x86_64-linux-gnu")
endforeach()
# The folder that Debian keeps for this width.
set(CMAKE_INSTALL_LIBDIR lib32 CACHE PATH "Libraries, below the prefix")
