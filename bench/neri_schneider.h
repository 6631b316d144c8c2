/*
 * Day numbers by Neri and Schneider's Euclidean affine functions (2022):
 * the fastest published Gregorian conversion, here as the limit the
 * benchmarks measure the library's own against.  Written from the paper's
 * description: years start on 1 March and are shifted by whole 400-year eras
 * so that every division is unsigned, and the month and day of a day in the
 * year come from one multiplication and a shift.
 */
#ifndef QV_BENCH_NERI_SCHNEIDER_H
#define QV_BENCH_NERI_SCHNEIDER_H

#include <stdint.h>

namespace ns {

constexpr uint32_t kEras = 82;                                      /* shift: years stay positive */
constexpr uint32_t kShiftDays = 657377 + 146097 * kEras;            /* 1 March of year 0 to 1 January 1800 */
constexpr uint32_t kShiftYears = 400 * kEras;

/* Days from 1 January 1800. */
inline uint32_t toDays(uint32_t y, uint32_t m, uint32_t d)
{
    const uint32_t j = m <= 2;
    const uint32_t Y = y + kShiftYears - j;
    const uint32_t M = j ? m + 12 : m;
    const uint32_t C = Y / 100;
    const uint32_t yearDays = 1461 * Y / 4 - C + C / 4;
    const uint32_t monthDays = (979 * M - 2919) / 32;
    return yearDays + monthDays + d - 1 - kShiftDays;
}

struct Date {
    uint32_t y, m, d;
};

inline Date toDate(uint32_t days)
{
    const uint32_t n1 = 4 * (days + kShiftDays) + 3;
    const uint32_t century = n1 / 146097;
    const uint32_t n2 = (n1 % 146097) | 3;
    const uint64_t p2 = uint64_t{2939745} * n2;
    const uint32_t yearOfCentury = static_cast<uint32_t>(p2 >> 32);
    const uint32_t dayOfYear = static_cast<uint32_t>(p2) / 2939745 / 4;
    const uint32_t n3 = 2141 * dayOfYear + 197913;
    const uint32_t j = dayOfYear >= 306;
    return Date{100 * century + yearOfCentury - kShiftYears + j, (n3 >> 16) - 12 * j, (n3 & 0xFFFF) / 2141 + 1};
}

} // namespace ns

#endif /* QV_BENCH_NERI_SCHNEIDER_H */
