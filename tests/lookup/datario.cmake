target_sources(test_lookup PRIVATE ${CMAKE_CURRENT_LIST_DIR}/test_datario.cpp)
