#include <cstring>
#include <string>

#include <gtest/gtest.h>

#include "mmslib.h"

namespace {

time_and_date moment(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    return {
        {static_cast<uint16_t>(year), static_cast<uint8_t>(month), static_cast<uint8_t>(day)},
        {static_cast<uint8_t>(hour), static_cast<uint8_t>(minute), static_cast<uint8_t>(second)}};
}

std::string shown(const time_date &date, const time_clock &clock) {
    char line[64];
    snprintf(line, sizeof line, "%04u-%02u-%02u %02u:%02u:%02u", unsigned{date.year},
             unsigned{date.month}, unsigned{date.day}, unsigned{clock.hour}, unsigned{clock.minute},
             unsigned{clock.second});
    return line;
}

// The C library's own calendar is the measure, over every part of the 32-bit range.
TEST(Calendar, AgreesWithGmtime) {
    EXPECT_EQ("1970-01-01 00:00:00", shown(time_reference.date, time_reference.clock));
    for (uint64_t seconds = 0; seconds <= UINT32_MAX; seconds += 3999971) {
        const auto count = static_cast<uint32_t>(seconds);
        const auto time = static_cast<time_t>(seconds);
        char expected[64];
        struct tm parts = {};
        std::strftime(expected, sizeof expected, "%Y-%m-%d %H:%M:%S", gmtime_r(&time, &parts));
        time_clock clock;
        time_date day;
        time_sec_to_time_and_date(count, &clock, &day);
        EXPECT_EQ(expected, shown(day, clock));
        uint32_t back = 0;
        EXPECT_EQ(count, time_and_date_to_sec(&clock, &day, &back));
        EXPECT_EQ(count, back);
        EXPECT_EQ(parts.tm_yday + 1, time_get_day_of_year(&day));
    }
    EXPECT_EQ(0, time_is_leap_year(1900));
    const time_date nowhere = moment(2003, 200, 7).date;
    EXPECT_EQ(7, time_get_day_of_year(&nowhere));
}

TEST(Calendar, AddsAndSubtracts) {
    time_clock clock = moment(0, 0, 0, 23, 59, 59).clock;
    EXPECT_EQ(86400U, time_add_to_clock(&clock, 1));
    EXPECT_EQ(0U, time_add_to_clock(&clock, 61));
    EXPECT_EQ(3U * 86400, time_add_to_clock(&clock, 3 * 86400));
    time_date day = moment(2004, 2, 28).date;
    EXPECT_EQ(5U, time_add_to_date(&day, 86405));
    EXPECT_EQ("2004-02-29 00:01:01", shown(day, clock));
    time_and_date new_year = moment(2003, 12, 31, 23, 0, 1);
    time_add_to_time(&new_year, 3600);
    EXPECT_EQ("2004-01-01 00:00:01", shown(new_year.date, new_year.clock));

    const time_and_date start = moment(2003, 12, 31, 2, 1, 1);
    const time_and_date end = moment(2004, 1, 1, 1);
    EXPECT_EQ(-3661, time_get_clock_diff(&start.clock, &end.clock));
    EXPECT_EQ(86400U - 3661, time_get_time_diff(&start, &end));
    // Of a second date in an earlier year only the days of the year count.
    EXPECT_EQ(364U * 86400, time_get_date_diff(&end.date, &start.date));
}

TEST(Calendar, LocalTime) {
    setenv("TZ", "MMS-2", 1); // two hours east of Greenwich, without daylight-saving time
    EXPECT_EQ(1078099200U + 7200, ConvertAnsiToTimeServerTime(1078099200));
    EXPECT_EQ(1078099200, ConvertTimeServerToAnsiTime(1078099200 + 7200));
    EXPECT_EQ(0U, ConvertAnsiToTimeServerTime(INT64_MAX)) << "no year holds it";
    unsetenv("TZ");
    tzset();
}

} // namespace
