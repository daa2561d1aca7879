# The client popup: its search on a real data folder, its widgets headless,
# the round trip of a client field.
target_sources(test_lookup PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/test_listacli.h
    ${CMAKE_CURRENT_LIST_DIR}/test_listacli.cpp
    ${CMAKE_CURRENT_LIST_DIR}/test_listacli_popup.cpp
)
