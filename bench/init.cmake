# The set-up tool's demo office at scale: bench_init writes 100,000 and
# 1,000,000 movements into a fresh office in a temporary folder.
add_executable(bench_init bench_init.cpp)
target_link_libraries(bench_init PRIVATE dati_demo benchmark::benchmark)
