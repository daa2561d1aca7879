# Grid column layouts (widgets).
add_library(store_grid STATIC ${CMAKE_CURRENT_LIST_DIR}/Griglie.cpp)
target_link_libraries(store_grid PUBLIC store Qt6::Widgets)
