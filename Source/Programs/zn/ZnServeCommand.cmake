# zn serve runs the local stand-in for the motion service.
target_link_libraries(${ZnTarget} PRIVATE ZnLocalService)
