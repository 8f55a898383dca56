# SPDX-License-Identifier: MIT
# What the sanitizers are told in every test.

set(PELLARVINE_TEST_ENVIRONMENT
    "ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1"
    "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/cmake/leaks.supp:print_suppressions=0"
    "TSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/cmake/races.supp"
    "UBSAN_OPTIONS=print_stacktrace=1")
