# The management list over a million movements: the extraction and a
# confirmed code with its refresh: build/bench/bench_gesdist
add_executable(bench_gesdist ${CMAKE_CURRENT_LIST_DIR}/bench_gesdist.cpp)
target_link_libraries(bench_gesdist PRIVATE distinte_schermi benchmark::benchmark)
