target_sources(test_reports PRIVATE ${CMAKE_CURRENT_LIST_DIR}/test_esporta.cpp)
