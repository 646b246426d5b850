# Cross build for 64-bit ARM Linux (the `arm64` preset) with Debian's aarch64 toolchain
# (g++-aarch64-linux-gnu). The libraries the build links come from a folder of unpacked arm64
# Debian packages made by scripts/arm64-sysroot.sh (by default build/arm64/sysroot, filled here
# on the first configure), so nothing of the host's x86-64 libraries is replaced. Programs built
# this way run under qemu-user: ctest and the build steps that run a built program (the
# reflection generator, test discovery) go through CMAKE_CROSSCOMPILING_EMULATOR.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)

if(NOT ZN_ARM64_SYSROOT)
	set(ZN_ARM64_SYSROOT "${CMAKE_BINARY_DIR}/sysroot")
endif()
# Compiler checks run in scratch projects of their own, which need no libraries.
get_property(ZnInTryCompile GLOBAL PROPERTY IN_TRY_COMPILE)
if(NOT ZnInTryCompile)
	execute_process(COMMAND bash "${CMAKE_CURRENT_LIST_DIR}/../scripts/arm64-sysroot.sh" "${ZN_ARM64_SYSROOT}"
		RESULT_VARIABLE ZnSysrootResult)
	if(NOT ZnSysrootResult EQUAL 0)
		message(FATAL_ERROR "The arm64 libraries could not be unpacked into ${ZN_ARM64_SYSROOT}: see the output above.")
	endif()
endif()

set(ZnArm64Libraries "${ZN_ARM64_SYSROOT}/usr/lib/aarch64-linux-gnu")
set(CMAKE_FIND_ROOT_PATH "${ZN_ARM64_SYSROOT}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# pkg-config looks in the sysroot only: the arm64 preset sets PKG_CONFIG_LIBDIR and
# PKG_CONFIG_SYSROOT_DIR in its environment (CMake runs pkg-config with the environment it started with).

# The sysroot's headers and libraries stand where /usr/include and /usr/lib are for a native build:
# searched after the toolchain's own, and libraries' own dependencies found there when linking.
set(CMAKE_C_FLAGS_INIT "-idirafter ${ZN_ARM64_SYSROOT}/usr/include")
set(CMAKE_CXX_FLAGS_INIT "-idirafter ${ZN_ARM64_SYSROOT}/usr/include")
foreach(Kind EXE SHARED MODULE)
	set(CMAKE_${Kind}_LINKER_FLAGS_INIT "-L${ZnArm64Libraries} -Wl,-rpath-link,${ZnArm64Libraries}")
endforeach()

# The toolchain's C library and runtime, then the sysroot's libraries, for the programs under qemu;
# espeak-ng reads its voices from the folder its arm64 package installed, found through its
# ESPEAK_DATA_PATH (the folder above espeak-ng-data).
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-aarch64 -L /usr/aarch64-linux-gnu
	-E "LD_LIBRARY_PATH=${ZnArm64Libraries}:${ZN_ARM64_SYSROOT}/lib/aarch64-linux-gnu"
	-E "ESPEAK_DATA_PATH=${ZnArm64Libraries}")
