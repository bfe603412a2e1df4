# The TV's target, 32-bit Arm Linux with hard float, built with Debian's cross compiler
# (g++-arm-linux-gnueabihf). The target's libraries come from a sysroot unpacked from Debian's armhf
# packages (checks/arm.sh builds it); test programs run under user-mode emulation (qemu-arm).
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(CMAKE_LIBRARY_ARCHITECTURE arm-linux-gnueabihf)
set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)

# try_compile projects have their own binary folder, so they get the sysroot passed on.
if(NOT NORVANE_ARM_SYSROOT)
  set(NORVANE_ARM_SYSROOT "${CMAKE_BINARY_DIR}/sysroot" CACHE PATH "Unpacked armhf libraries")
endif()
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES NORVANE_ARM_SYSROOT)

# The sysroot holds only libraries, not the C library: the compiler keeps its own armhf libc and
# libstdc++, so no --sysroot; packages and libraries are looked up in the sysroot alone.
set(CMAKE_FIND_ROOT_PATH "${NORVANE_ARM_SYSROOT}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_SYSROOT_DIR} "${NORVANE_ARM_SYSROOT}")
set(ENV{PKG_CONFIG_LIBDIR}
  "${NORVANE_ARM_SYSROOT}/usr/lib/arm-linux-gnueabihf/pkgconfig:${NORVANE_ARM_SYSROOT}/usr/share/pkgconfig")

# Where a native multiarch system searches by default: the headers after the compiler's own (as
# system headers), the libraries' own dependencies at link time.
set(_arm_includes
  "-idirafter ${NORVANE_ARM_SYSROOT}/usr/include/arm-linux-gnueabihf -idirafter ${NORVANE_ARM_SYSROOT}/usr/include")
set(CMAKE_C_FLAGS_INIT "${_arm_includes}")
set(CMAKE_CXX_FLAGS_INIT "${_arm_includes}")
set(_arm_link "-Wl,-rpath-link,${NORVANE_ARM_SYSROOT}/lib/arm-linux-gnueabihf:${NORVANE_ARM_SYSROOT}/usr/lib/arm-linux-gnueabihf")
set(CMAKE_EXE_LINKER_FLAGS_INIT "${_arm_link}")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "${_arm_link}")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "${_arm_link}")

# CTest (and test discovery) run every target program through the emulator, which resolves the
# program's loader and libraries inside the sysroot.
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm -L "${NORVANE_ARM_SYSROOT}")
