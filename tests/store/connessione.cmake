# Schema dictionary, connection, attachments, transactions, set-up tool.
target_sources(test_store PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/ProvaInsieme.h
    ${CMAKE_CURRENT_LIST_DIR}/test_schema.cpp
    ${CMAKE_CURRENT_LIST_DIR}/test_connessione.cpp
    ${CMAKE_CURRENT_LIST_DIR}/test_transazione.cpp
    ${CMAKE_CURRENT_LIST_DIR}/test_init.cpp
)
# The set-up tool is tested by running it.
add_dependencies(test_store sorvane-init)
target_compile_definitions(test_store PRIVATE SORVANE_INIT="$<TARGET_FILE:sorvane-init>")
