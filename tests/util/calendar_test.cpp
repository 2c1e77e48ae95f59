#include <cstring>
#include <string>

#include <gtest/gtest.h>

#include "mmslib.h"

namespace {

time_date date(int year, int month, int day) {
    return {static_cast<uint16_t>(year), static_cast<uint8_t>(month), static_cast<uint8_t>(day)};
}

time_clock clock_of(int hour, int minute, int second) {
    return {static_cast<uint8_t>(hour), static_cast<uint8_t>(minute), static_cast<uint8_t>(second)};
}

std::string shown(const time_date &date, const time_clock &clock) {
    char line[64];
    snprintf(line, sizeof line, "%04u-%02u-%02u %02u:%02u:%02u", unsigned{date.year},
             unsigned{date.month}, unsigned{date.day}, unsigned{clock.hour}, unsigned{clock.minute},
             unsigned{clock.second});
    return line;
}

TEST(Calendar, ReferenceAndLeapYears) {
    const uint8_t octets[8] = {0xB2, 0x07, 1, 1, 0, 0, 0, 0};
    EXPECT_EQ(0, std::memcmp(&time_reference, octets, sizeof octets));
    EXPECT_EQ(1, time_is_leap_year(2000));
    EXPECT_EQ(1, time_is_leap_year(2004));
    EXPECT_EQ(0, time_is_leap_year(1900));
    EXPECT_EQ(0, time_is_leap_year(2001));
    const time_date leap = date(2004, 3, 1);
    const time_date common = date(2003, 3, 1);
    const time_date nowhere = date(2003, 200, 7);
    EXPECT_EQ(61, time_get_day_of_year(&leap));
    EXPECT_EQ(60, time_get_day_of_year(&common));
    EXPECT_EQ(7, time_get_day_of_year(&nowhere));
}

// The C library's own calendar is the measure, over every part of the 32-bit range.
TEST(Calendar, AgreesWithGmtime) {
    for (uint64_t seconds = 0; seconds <= UINT32_MAX; seconds += 3999971) {
        const auto count = static_cast<uint32_t>(seconds);
        const auto time = static_cast<time_t>(seconds);
        struct tm expected = {};
        gmtime_r(&time, &expected);
        time_clock clock;
        time_date day;
        time_sec_to_time_and_date(count, &clock, &day);
        EXPECT_EQ(shown(date(expected.tm_year + 1900, expected.tm_mon + 1, expected.tm_mday),
                        clock_of(expected.tm_hour, expected.tm_min, expected.tm_sec)),
                  shown(day, clock));
        uint32_t back = 0;
        EXPECT_EQ(count, time_and_date_to_sec(&clock, &day, &back));
        EXPECT_EQ(count, back);
        EXPECT_EQ(expected.tm_yday + 1, time_get_day_of_year(&day));
    }
}

TEST(Calendar, AddsAndSubtracts) {
    time_clock clock = clock_of(23, 59, 59);
    EXPECT_EQ(86400U, time_add_to_clock(&clock, 1));
    EXPECT_EQ(0U, time_add_to_clock(&clock, 61));
    EXPECT_EQ(3U * 86400, time_add_to_clock(&clock, 3 * 86400));
    time_date day = date(2004, 2, 28);
    EXPECT_EQ(5U, time_add_to_date(&day, 86405));
    EXPECT_EQ("2004-02-29 00:01:01", shown(day, clock));
    time_and_date new_year = {date(2003, 12, 31), clock_of(23, 0, 1)};
    time_add_to_time(&new_year, 3600);
    EXPECT_EQ("2004-01-01 00:00:01", shown(new_year.date, new_year.clock));
    const time_clock early = clock_of(1, 0, 0);
    const time_clock late = clock_of(2, 1, 1);
    EXPECT_EQ(3661, time_get_clock_diff(&early, &late));
    EXPECT_EQ(-3661, time_get_clock_diff(&late, &early));
    // Of a second date in an earlier year only the days of the year count.
    const time_date first = date(2004, 1, 1);
    const time_date second = date(2003, 1, 3);
    EXPECT_EQ(2U * 86400, time_get_date_diff(&first, &second));
    const time_and_date start = {date(2003, 12, 31), late};
    const time_and_date end = {date(2004, 1, 1), early};
    EXPECT_EQ(86400U - 3661, time_get_time_diff(&start, &end));
}

TEST(Calendar, LocalTime) {
    setenv("TZ", "MMS-2", 1); // two hours east of Greenwich, without daylight-saving time
    EXPECT_EQ(1078099200U + 7200, ConvertAnsiToTimeServerTime(1078099200));
    EXPECT_EQ(1078099200, ConvertTimeServerToAnsiTime(1078099200 + 7200));
    unsetenv("TZ");
    tzset();
}

} // namespace
