#include "util/util.h"

constexpr time_and_date time_reference = {{1970, 1, 1}, {0, 0, 0}};

namespace {

constexpr uint32_t minute_seconds = 60;
constexpr uint32_t hour_seconds = 3600;
constexpr uint32_t day_seconds = 86400;

// Indexed by month, 1 to 12, and by leap year.
constexpr uint16_t days_before_month[13][2] = {
    {0, 0},     {0, 0},     {31, 31},   {59, 60},   {90, 91},   {120, 121}, {151, 152},
    {181, 182}, {212, 213}, {243, 244}, {273, 274}, {304, 305}, {334, 335},
};
constexpr uint8_t days_in_month[13][2] = {
    {0, 0},   {31, 31}, {28, 29}, {31, 31}, {30, 30}, {31, 31}, {30, 30},
    {31, 31}, {31, 31}, {30, 30}, {31, 31}, {30, 30}, {31, 31},
};
constexpr uint8_t last_month = 12;

uint32_t days_in_year(uint16_t year) { return time_is_leap_year(year) != 0 ? 366 : 365; }

// Reduces a clock field that has reached its limit; whether it had.
bool carry(uint32_t &value, uint32_t limit) {
    if (value < limit) {
        return false;
    }
    value -= limit;
    return true;
}

} // namespace

uint8_t time_is_leap_year(uint16_t year) {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0 ? 1 : 0;
}

uint16_t time_get_day_of_year(const time_date *pDate) {
    const uint8_t month = pDate->month <= last_month ? pDate->month : 0;
    const uint16_t before = days_before_month[month][time_is_leap_year(pDate->year)];
    return static_cast<uint16_t>(before + pDate->day);
}

int32_t time_get_clock_diff(const time_clock *pFirst, const time_clock *pSecond) {
    return (pSecond->hour - pFirst->hour) * static_cast<int32_t>(hour_seconds) +
           (pSecond->minute - pFirst->minute) * static_cast<int32_t>(minute_seconds) +
           (pSecond->second - pFirst->second);
}

uint32_t time_get_date_diff(const time_date *pFirst, const time_date *pSecond) {
    uint32_t days = 0;
    for (uint16_t year = pFirst->year; year < pSecond->year; ++year) {
        days += days_in_year(year);
    }
    days += uint32_t{time_get_day_of_year(pSecond)} - time_get_day_of_year(pFirst);
    return days * day_seconds;
}

uint32_t time_get_time_diff(const time_and_date *pFirst, const time_and_date *pSecond) {
    return time_get_date_diff(&pFirst->date, &pSecond->date) +
           static_cast<uint32_t>(time_get_clock_diff(&pFirst->clock, &pSecond->clock));
}

uint32_t time_and_date_to_sec(const time_clock *pClock, const time_date *pDate,
                              uint32_t *pSeconds) {
    const time_and_date time = {*pDate, *pClock};
    *pSeconds = time_get_time_diff(&time_reference, &time);
    return *pSeconds;
}

uint32_t time_add_to_clock(time_clock *pClock, uint32_t seconds) {
    const uint32_t rest = seconds % day_seconds;
    uint32_t hour = uint32_t{pClock->hour} + rest / hour_seconds;
    uint32_t minute = uint32_t{pClock->minute} + rest % hour_seconds / minute_seconds;
    uint32_t second = uint32_t{pClock->second} + rest % minute_seconds;
    minute += carry(second, 60) ? 1U : 0U;
    hour += carry(minute, 60) ? 1U : 0U;
    const uint32_t carried_days = carry(hour, 24) ? 1 : 0;
    *pClock = {static_cast<uint8_t>(hour), static_cast<uint8_t>(minute),
               static_cast<uint8_t>(second)};
    return (seconds / day_seconds + carried_days) * day_seconds;
}

uint32_t time_add_to_date(time_date *pDate, uint32_t seconds) {
    uint32_t day = time_get_day_of_year(pDate) + seconds / day_seconds;
    while (day > days_in_year(pDate->year)) {
        day -= days_in_year(pDate->year);
        ++pDate->year;
    }
    const uint8_t leap = time_is_leap_year(pDate->year);
    uint8_t month = 1;
    while (month < last_month && day > days_in_month[month][leap]) {
        day -= days_in_month[month][leap];
        ++month;
    }
    pDate->month = month;
    pDate->day = static_cast<uint8_t>(day);
    return seconds % day_seconds;
}

void time_add_to_time(time_and_date *pTime, uint32_t seconds) {
    const uint32_t left = time_add_to_date(&pTime->date, seconds);
    const uint32_t carried = time_add_to_clock(&pTime->clock, left);
    if (carried != 0) {
        time_add_to_date(&pTime->date, carried);
    }
}

void time_sec_to_time_and_date(uint32_t seconds, time_clock *pClock, time_date *pDate) {
    time_and_date time = time_reference;
    time_add_to_time(&time, seconds);
    *pClock = time.clock;
    *pDate = time.date;
}

time_t ConvertTimeServerToAnsiTime(uint32_t seconds) {
    time_clock clock;
    time_date date;
    time_sec_to_time_and_date(seconds, &clock, &date);
    struct tm local = {};
    local.tm_year = date.year - 1900;
    local.tm_mon = date.month - 1;
    local.tm_mday = date.day;
    local.tm_hour = clock.hour;
    local.tm_min = clock.minute;
    local.tm_sec = clock.second;
    return mktime(&local);
}

uint32_t ConvertAnsiToTimeServerTime(time_t time) {
    struct tm local = {};
    // localtime keeps its result in a place that all threads share.
    tzset();
    if (localtime_r(&time, &local) == nullptr) {
        return 0;
    }
    const time_date date = {static_cast<uint16_t>(static_cast<uint32_t>(local.tm_year) + 1900),
                            static_cast<uint8_t>(local.tm_mon + 1),
                            static_cast<uint8_t>(local.tm_mday)};
    const time_clock clock = {static_cast<uint8_t>(local.tm_hour),
                              static_cast<uint8_t>(local.tm_min),
                              static_cast<uint8_t>(local.tm_sec)};
    uint32_t seconds = 0;
    return time_and_date_to_sec(&clock, &date, &seconds);
}
