# zn serve runs the local stand-in for the motion service, speaking with ZnSpeech by default.
target_link_libraries(${ZnTarget} PRIVATE ZnLocalService ZnSpeech)
