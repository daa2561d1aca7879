# Connection, schema, attachments, transactions.
target_sources(store PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/Schema.cpp
    ${CMAKE_CURRENT_LIST_DIR}/SchemaTabelle.cpp
    ${CMAKE_CURRENT_LIST_DIR}/Connessione.cpp
    ${CMAKE_CURRENT_LIST_DIR}/ConnessioneAllegati.cpp
    ${CMAKE_CURRENT_LIST_DIR}/Transazione.cpp
)
