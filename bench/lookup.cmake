# The client lookup on 100,000 clients in a temporary folder: the search by
# the start of a name and the popup shown: build/bench/bench_lookup
add_executable(bench_lookup ${CMAKE_CURRENT_LIST_DIR}/bench_lookup.cpp)
target_link_libraries(bench_lookup PRIVATE lookup dati_demo benchmark::benchmark)
