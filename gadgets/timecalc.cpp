/*
 * The arithmetic of the time bars.  Everything that moves a time goes
 * through the date engine's own functions, so the bars agree with the rest
 * of the library on calendars and limits.
 */
#include "timecalc.h"

namespace {

constexpr uint32_t kMinutesPerDay = 24 * 60;

/* The first valid minute at or after m on the snap grid of its hour. */
uint32_t alignUp(uint32_t m, uint8_t snap)
{
    if (snap <= 1)
        return m;
    const uint32_t inHour = m % 60;
    const uint32_t up = (inHour + snap - 1) / snap * snap;
    return up < 60 ? m - inHour + up : m - inHour + 60;
}

int floorDiv(int a, int b)
{
    return a >= 0 ? a / b : -((-a + b - 1) / b);
}

} // namespace

void tcRound(OSDateTime *t, uint8_t step)
{
    t->minute = tcRoundDown(t->minute, step);
    t->second = 0;
}

bool tcIsTime(const OSDateTime *t)
{
    if (!t || !OSIsValidDateTime(t))
        return false;
    // The sentinels have every field 1 or every field 2; year 1 or 2 is
    // outside the calendar, so the year alone tells them apart.
    return t->year >= 1800;
}

uint32_t tcMinutes(const OSDateTime &t)
{
    return OSDaysSince01011800(t.year, t.month, t.day) * kMinutesPerDay + t.hour * 60u + t.minute;
}

bool tcFromMinutes(uint32_t minutes, OSDateTime *t)
{
    OSDateTime base = {1800, 1, 1, 0, 0, 0, 0};
    const uint32_t days = minutes / kMinutesPerDay, rest = minutes % kMinutesPerDay;
    if (days > 110302 || !OSAdjustDateTimeByDays(&base, static_cast<int32_t>(days)))
        return false;
    base.hour = static_cast<uint8_t>(rest / 60);
    base.minute = static_cast<uint8_t>(rest % 60);
    *t = base;
    return true;
}

uint32_t tcDayLimit(const OSDateTime &t, uint8_t snap)
{
    return OSDaysSince01011800(t.year, t.month, t.day) * kMinutesPerDay + 23 * 60 + tcRoundDown(59, snap);
}

uint32_t tcDuration(const OSDateTime &start, const OSDateTime &end)
{
    const uint32_t a = tcMinutes(start), b = tcMinutes(end);
    return b > a ? b - a : 0;
}

void tcEndKeepingDuration(const OSDateTime &start, uint32_t duration, uint8_t snap, OSDateTime *end)
{
    uint32_t m = tcMinutes(start) + duration;
    const uint32_t limit = tcDayLimit(start, snap);
    if (m > limit)
        m = limit;
    if (m < tcMinutes(start))
        m = tcMinutes(start); // a start past the limit (a snap step that changed since)
    tcFromMinutes(m, end);
    tcRound(end, snap);
    end->hourBias = start.hourBias;
}

bool tcApplyDayLimit(OSDateTime *start, OSDateTime *end, uint32_t duration, uint8_t snap)
{
    const uint32_t limit = tcDayLimit(*start, snap);
    if (tcMinutes(*start) + duration <= limit)
        return false;
    const uint32_t dayStart = limit - limit % kMinutesPerDay;
    const uint32_t s = limit - dayStart >= duration ? limit - duration : dayStart;
    const uint8_t bias = start->hourBias;
    tcFromMinutes(limit, end);
    tcFromMinutes(s, start);
    tcRound(start, snap);
    start->hourBias = end->hourBias = bias;
    return true;
}

TcLayout tcLayout(int left, int width, int hours)
{
    TcLayout layout = {left, width < 0 ? 0 : width, hours < 0 ? 0 : hours, 0, 0};
    if (layout.hours > 0) {
        layout.perHour = layout.width / layout.hours;
        layout.extra = layout.width % layout.hours;
    }
    return layout;
}

int tcCellLeft(const TcLayout &layout, int cell)
{
    const int before = cell < 0 ? 0 : (cell < layout.extra ? cell : layout.extra);
    return layout.left + cell * layout.perHour + before;
}

int tcTimeX(const TcLayout &layout, int32_t hours, int32_t minutes)
{
    return tcCellLeft(layout, hours) + minutes * layout.perHour / 60;
}

int32_t tcMinutesAtX(const TcLayout &layout, int x)
{
    if (layout.perHour <= 0)
        return 0;
    const int rel = x - layout.left;
    const int wide = layout.extra * (layout.perHour + 1); // the cells with an extra pixel
    int hour, within;
    if (rel >= 0 && rel < wide) {
        hour = rel / (layout.perHour + 1);
        within = rel - hour * (layout.perHour + 1);
    } else if (rel >= wide) {
        hour = layout.extra + (rel - wide) / layout.perHour;
        within = (rel - wide) % layout.perHour;
    } else {
        hour = floorDiv(rel, layout.perHour);
        within = rel - hour * layout.perHour;
    }
    int minute = within * 60 / layout.perHour;
    if (minute > 59)
        minute = 59;
    return hour * 60 + minute;
}

bool tcPositionOf(const TcLayout &layout, const OSDateTime &first, const OSDateTime &t, int *x)
{
    int32_t days, hours, minutes, seconds;
    if (!OSDiffDateTime(&first, &t, &days, &hours, &minutes, &seconds))
        return false;
    *x = tcTimeX(layout, hours + days * 24, minutes);
    return true;
}

uint32_t tcNextScrollStep(uint32_t step, uint32_t tick)
{
    if (tick % 6 == 0)
        step *= 2;
    return step > 60 ? 60 : step;
}

bool tcFindFree(uint32_t from, uint32_t duration, uint8_t snap, const TTBusyBlock *blocks, uint32_t count,
                uint32_t *found)
{
    const uint32_t step = snap ? snap : 1;
    const uint32_t lastDayLimit = 110302 * kMinutesPerDay + 23 * 60 + tcRoundDown(59, snap);
    // A range longer than a whole day's span fits nowhere.
    if (duration > 23 * 60u + tcRoundDown(59, snap))
        return false;
    uint32_t t = alignUp(from + step, snap);
    // Each pass either accepts t or moves it past a block or into the next
    // day, so the passes are bounded by the blocks and days crossed.
    for (uint32_t pass = 0; pass <= 2 * count + 2 && t <= lastDayLimit; pass++) {
        const uint32_t dayStart = t - t % kMinutesPerDay;
        if (t + duration > dayStart + 23 * 60 + tcRoundDown(59, snap)) {
            t = dayStart + kMinutesPerDay;
            continue;
        }
        const TTBusyBlock *clash = nullptr;
        for (uint32_t i = 0; i < count; i++) {
            const TTBusyBlock &b = blocks[i];
            if (b.endMinutes > b.startMinutes && t < b.endMinutes && t + duration > b.startMinutes &&
                (!clash || b.endMinutes > clash->endMinutes))
                clash = &b;
        }
        if (!clash) {
            *found = t;
            return true;
        }
        t = alignUp(clash->endMinutes, snap);
    }
    return false;
}
