# Recordsets, shared tables, client buffer, currency.
target_sources(store PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/RecordsetSql.cpp
    ${CMAKE_CURRENT_LIST_DIR}/Recordset.cpp
    ${CMAKE_CURRENT_LIST_DIR}/RecordsetStato.cpp
    ${CMAKE_CURRENT_LIST_DIR}/Tabelle.cpp
    ${CMAKE_CURRENT_LIST_DIR}/Cliente.cpp
    ${CMAKE_CURRENT_LIST_DIR}/Descrizioni.cpp
    ${CMAKE_CURRENT_LIST_DIR}/Cambi.cpp
)
