# Staging the slip print of 5,000 rows (reading the extraction, writing
# PrtTesta and PrtCorpo; no rendering), which must stay under 2 seconds:
# build/bench/bench_stampadist
add_executable(bench_stampadist ${CMAKE_CURRENT_LIST_DIR}/bench_stampadist.cpp)
target_link_libraries(bench_stampadist PRIVATE distinte_stampa benchmark::benchmark)
