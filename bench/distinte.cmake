# The save of a slip of 500 working rows over a ledger of some 50,000
# movements, the files in a temporary folder: build/bench/bench_distinte
add_executable(bench_distinte ${CMAKE_CURRENT_LIST_DIR}/bench_distinte.cpp)
target_link_libraries(bench_distinte PRIVATE distinte_regole benchmark::benchmark)
