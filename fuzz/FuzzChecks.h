#pragma once
// What every fuzz target may assume about the code under test; a broken promise aborts, so
// both libFuzzer and the replay runner report it.
#include <cstdio>
#include <cstdlib>

#define FUZZ_CHECK(condition)                                                                  \
    do {                                                                                       \
        if (!(condition)) {                                                                    \
            std::fprintf(stderr, "%s:%d: fuzz check failed: %s\n", __FILE__, __LINE__, #condition); \
            std::abort();                                                                      \
        }                                                                                      \
    } while (false)
