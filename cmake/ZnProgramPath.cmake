# zn_program_path(Target OutVar): a path that runs the built program Target from a shell, for
# tests that start a program of the build themselves (popen, system). Natively that is the
# program; in a cross build it is a small script that runs it under CMAKE_CROSSCOMPILING_EMULATOR,
# since the host cannot start the target's programs directly.
function(zn_program_path Target OutVar)
	if(NOT CMAKE_CROSSCOMPILING OR NOT CMAKE_CROSSCOMPILING_EMULATOR)
		set(${OutVar} "$<TARGET_FILE:${Target}>" PARENT_SCOPE)
		return()
	endif()
	set(Launcher "")
	foreach(Word ${CMAKE_CROSSCOMPILING_EMULATOR})
		string(APPEND Launcher "'${Word}' ")
	endforeach()
	# Beside the program, so that a test comparing the program's folder sees the same one; written
	# once however many test areas ask for it.
	set(Script "$<TARGET_FILE_DIR:${Target}>/${Target}.emulated")
	set(${OutVar} "${Script}" PARENT_SCOPE)
	get_property(Generated GLOBAL PROPERTY ZnEmulatedScript_${Target})
	if(Generated)
		return()
	endif()
	set_property(GLOBAL PROPERTY ZnEmulatedScript_${Target} TRUE)
	file(GENERATE OUTPUT "${Script}"
		CONTENT "#!/bin/sh\nexec ${Launcher}'$<TARGET_FILE:${Target}>' \"$@\"\n"
		FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
endfunction()
