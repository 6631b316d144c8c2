/*
 * The check the list fuzz targets share: a broken rule aborts the run with
 * the file and line of the check, so libFuzzer keeps the input that broke it.
 */
#ifndef QV_TESTS_FUZZ_CHECK_H
#define QV_TESTS_FUZZ_CHECK_H

#include <stdio.h>
#include <stdlib.h>

inline void fuzzCheckAt(bool condition, const char *file, int line)
{
    if (!condition) {
        fprintf(stderr, "%s:%d: check failed\n", file, line);
        abort();
    }
}
#define check(condition) fuzzCheckAt(condition, __FILE_NAME__, __LINE__)

#endif /* QV_TESTS_FUZZ_CHECK_H */
