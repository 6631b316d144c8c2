/*
 * The process-wide pseudo-random generator: a small linear congruential
 * sequence seeded from the tick count at start-up.  Only the low 16 bits of
 * the state take part, so sequences repeat after at most 65280 draws.
 */
#include "../base/os.h"
#include "qvutil.h"

namespace {
uint16_t RandomState;
}

extern "C" uint32_t QVAPI SeedRnd(void)
{
    uint32_t seed = osTickCount();
    RandomState = static_cast<uint16_t>(seed);
    return seed;
}

extern "C" uint16_t QVAPI Rnd(uint16_t n)
{
    int32_t next = (3431 * int32_t{RandomState} + 13367) % 65280;
    RandomState = static_cast<uint16_t>(next);
    return n ? static_cast<uint16_t>(RandomState % n) : 0;
}
