# zn demo runs the local service in-process with the speaking content source and writes the
# clips' exports beside the downloaded files.
target_link_libraries(${ZnTarget} PRIVATE ZnLocalService ZnSpeech ZnExport)
