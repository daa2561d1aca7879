target_sources(test_store PRIVATE)
