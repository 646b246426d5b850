# zn generate writes clips made by the motion generator.
target_link_libraries(${ZnTarget} PRIVATE ZnMotionGenerator)
