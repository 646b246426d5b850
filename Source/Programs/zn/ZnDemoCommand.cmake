# zn demo runs the local service in-process with the speaking content source.
target_link_libraries(${ZnTarget} PRIVATE ZnLocalService ZnSpeech)
