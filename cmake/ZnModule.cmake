# zn_add_engine_module(Name [DEPS ...]): a standalone stand-in for an engine module laid out
# the engine's way, Public/ for includes and Private/ for sources (globbed, so adding a file
# needs no edit here).
function(zn_add_engine_module Name)
	cmake_parse_arguments(ARG "" "" "DEPS;PRIVATE_DEPS" ${ARGN})
	file(GLOB_RECURSE Sources CONFIGURE_DEPENDS
		${CMAKE_CURRENT_SOURCE_DIR}/Private/*.cpp)
	file(GLOB_RECURSE Headers CONFIGURE_DEPENDS
		${CMAKE_CURRENT_SOURCE_DIR}/Public/*.h)
	add_library(${Name} STATIC ${Sources} ${Headers})
	target_include_directories(${Name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR}/Public
		PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}/Private)
	target_link_libraries(${Name} PUBLIC ${ARG_DEPS} PRIVATE ${ARG_PRIVATE_DEPS})
endfunction()
