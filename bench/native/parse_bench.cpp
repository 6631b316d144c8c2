/*
 * How fast typed dates are read and week numbers worked out: parses per
 * second of OSStringToDateTimeComplete over a mix of typical inputs, and the
 * time of one OSWeekNo call over every day of a decade.
 */
#include <stdio.h>

#include <chrono>

#include "../../base/globals.h"
#include "../../error/errorstate.h"
#include "date_words.h"
#include "qviso32.h"

namespace {

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

} // namespace

int main()
{
    fakeos::reset();
    fakeos::setLocalTime(OsTime{2024, 3, 2, 5, 14, 7, 9, 0});
    ResourceModule = reinterpret_cast<HMODULE>(0x10000);
    qvErrorReset();
    if (!datewords::startEnglish()) {
        printf("the date engine did not start\n");
        return 1;
    }

    const char *const mix[] = {"3/4/1998", "25 Dec 99 14:00", "tomorrow noon", "12/31/2024 11:59 pm",
                               "Sept. 3rd 2001", "9:30", "Thursday 21st March 2024", "7/4"};
    const int rounds = 200000;
    uint32_t valid = 0;
    auto start = Clock::now();
    for (int i = 0; i < rounds; i++) {
        OSDateTime t;
        valid += OSStringToDateTimeComplete(&t, mix[i % 8]);
    }
    double seconds = secondsSince(start);
    printf("OSStringToDateTimeComplete: %.0f parses/s (%d texts of a mix of 8, %u valid)\n", rounds / seconds, rounds,
           valid);

    static OSDateTime days[3653];
    for (uint32_t n = 0; n < 3653; n++) {
        days[n] = OSDateTime{2020, 1, 1, 0, 0, 0, 0};
        OSAdjustDateTimeByDays(&days[n], static_cast<int32_t>(n));
    }
    uint64_t sum = 0;
    int calls = 0;
    start = Clock::now();
    for (int repeat = 0; repeat < 50; repeat++) {
        for (const OSDateTime &day : days) {
            uint32_t week = 0;
            OSWeekNo(&day, static_cast<uint32_t>(repeat % 7), &week);
            sum += week;
            calls++;
        }
    }
    seconds = secondsSince(start);
    printf("OSWeekNo: %.0f ns per call (%d calls over 2020-2029, every week start; sum %llu)\n",
           seconds * 1e9 / calls, calls, static_cast<unsigned long long>(sum));
    return 0;
}
