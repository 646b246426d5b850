# ZnCppHttplib: cpp-httplib for the local service and the transport tests.
#
# Normally Debian's build of it (libcpp-httplib-dev: the declarations in httplib.h and the
# compiled library). With ZN_HTTPLIB_FROM_SOURCE (the libcxx preset) it is compiled into each
# user from Debian's source package instead, since the compiled library was built against
# libstdc++ and cannot be linked into a libc++ program: scripts/debian-source.sh unpacks the
# source, whose httplib.h holds the whole library, and the same options Debian builds it with
# (TLS, zlib and brotli compression, poll) are set here.
option(ZN_HTTPLIB_FROM_SOURCE "Compile cpp-httplib from Debian's source package instead of linking Debian's library" OFF)

find_package(PkgConfig REQUIRED)
add_library(ZnCppHttplib INTERFACE)
if(NOT ZN_HTTPLIB_FROM_SOURCE)
	pkg_check_modules(CppHttplib REQUIRED IMPORTED_TARGET cpp-httplib)
	target_link_libraries(ZnCppHttplib INTERFACE PkgConfig::CppHttplib)
	return()
endif()

set(ZnSourcePackages "${CMAKE_BINARY_DIR}/sources")
execute_process(COMMAND bash "${CMAKE_CURRENT_LIST_DIR}/../scripts/debian-source.sh" cpp-httplib "${ZnSourcePackages}"
	RESULT_VARIABLE ZnSourceResult)
if(NOT ZnSourceResult EQUAL 0 OR NOT EXISTS "${ZnSourcePackages}/cpp-httplib/httplib.h")
	message(FATAL_ERROR "cpp-httplib's source could not be unpacked into ${ZnSourcePackages}: see the output above.")
endif()
pkg_check_modules(CppHttplibDependencies REQUIRED IMPORTED_TARGET openssl zlib libbrotlicommon libbrotlidec libbrotlienc)
# Before any other include folder, so that no user sees the declarations-only header in /usr/include.
target_include_directories(ZnCppHttplib BEFORE INTERFACE "${ZnSourcePackages}/cpp-httplib")
target_compile_definitions(ZnCppHttplib INTERFACE
	CPPHTTPLIB_OPENSSL_SUPPORT CPPHTTPLIB_ZLIB_SUPPORT CPPHTTPLIB_BROTLI_SUPPORT CPPHTTPLIB_USE_POLL)
target_link_libraries(ZnCppHttplib INTERFACE PkgConfig::CppHttplibDependencies Threads::Threads)
