# Seeks and walks on a slip table of some 200,000 rows made in a temporary
# folder: build/bench/bench_store
add_executable(bench_store ${CMAKE_CURRENT_LIST_DIR}/bench_store.cpp)
target_link_libraries(bench_store PRIVATE store benchmark::benchmark)
