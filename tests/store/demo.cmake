# The demo office of the set-up tool, on real files.
target_sources(test_store PRIVATE ${CMAKE_CURRENT_LIST_DIR}/test_demo.cpp)
target_link_libraries(test_store PRIVATE dati_demo)
