# zn export and zn preview write clips for tools outside the engine.
target_link_libraries(${ZnTarget} PRIVATE ZnExport)
