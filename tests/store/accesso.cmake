# Recordsets, shared tables, client buffer, currency, grid layouts.
target_sources(test_store PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/ProvaAccesso.h
    ${CMAKE_CURRENT_LIST_DIR}/test_recordset.cpp
    ${CMAKE_CURRENT_LIST_DIR}/test_tabelle.cpp
    ${CMAKE_CURRENT_LIST_DIR}/test_cambi.cpp
)
target_sources(test_store PRIVATE ${CMAKE_CURRENT_LIST_DIR}/test_griglie.cpp)
target_link_libraries(test_store PRIVATE store_grid)
