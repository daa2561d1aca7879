target_sources(test_lookup PRIVATE)
