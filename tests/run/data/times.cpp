// Times on a clock of Central Europe: fields, texts, the calendar and the hours that summer time
// skips and repeats. Seconds since 1970 are published or counted by hand.
#include "import.hpp"

#include "../checks.h"
#include "../lists.h"

// 29 February 2024, 12:45:10 UTC, 13:45:10 in Central Europe.
static const Value leapDay = 1709210710;

static void testFields() {
    CHECK_EQUAL(
        gmtime(0).toString(),
        "{day: 1, hour: 0, minute: 0, month: 1, second: 0, weekday: 4, year: 1970, yearday: 1}");
    CHECK_EQUAL(
        localtime(leapDay).toString(),
        "{day: 29, hour: 13, minute: 45, month: 2, second: 10, weekday: 4, year: 2024, yearday: 60}");
    CHECK(mktime(localtime(leapDay)) == leapDay && mktime(0).isNull() &&
          mktime(Value("x")).isNull());
    CHECK(localtime(0)["hour"] == 1 && gmtime(Value(-1))["second"] == 59 &&
          gmtime(Value(-1))["year"] == 1969);
    CHECK(yearOf(leapDay) == 2024 && monthOf(leapDay) == 2 && dayOf(leapDay) == 29 &&
          hourOf(leapDay) == 13);
    CHECK(minuteOf(leapDay) == 45 && secondOf(leapDay) == 10 && weekdayOf(leapDay) == 4 &&
          dayOfYear(leapDay) == 60);
    // 1000000000 is 9 September 2001, 01:46:40 UTC, a Sunday.
    CHECK(gmtime(Value(1000000000))["day"] == 9 && gmtime(Value(1000000000))["weekday"] == 7);
    CHECK(gmtime(Value(-62135596800LL))["year"] == 1 &&
          gmtime(Value(253402300799LL))["year"] == 9999);
    CHECK(gmtime(Value(1e300))["year"] == 9999 && yearOf("x") == 1970 && yearOf(Value()) == 1970);
    // The year 1900 has no leap day; 1 March 1900 is 25508 days before 1970.
    CHECK(gmtime(Value(-25508LL * 86400))["month"] == 3 &&
          gmtime(Value(-25509LL * 86400))["day"] == 28);
}

static void testWeeks() {
    // Published examples of ISO weeks.
    CHECK(weekOf(makeTime(2005, 1, 1, 12, 0, 0)) == 53 &&
          weekOf(makeTime(2005, 12, 31, 12, 0, 0)) == 52);
    CHECK(weekOf(makeTime(2007, 1, 1, 0, 0, 0)) == 1 &&
          weekOf(makeTime(2008, 12, 29, 0, 0, 0)) == 1);
    CHECK(weekOf(makeTime(2010, 1, 3, 0, 0, 0)) == 53 &&
          weekOf(makeTime(2009, 12, 31, 0, 0, 0)) == 53);
    CHECK(weekOf(makeTime(2024, 2, 29, 0, 0, 0)) == 9);
}

static void testFormats() {
    CHECK_EQUAL(formatTime(leapDay, "yyyy-MM-dd HH:mm:ss"), "2024-02-29 13:45:10");
    CHECK_EQUAL(formatTime(1709210710.25, "ddd dddd MMM MMMM fff d!"),
                "Thu Thursday Feb February 250 d!");
    CHECK(formatTime(leapDay, "").empty() && formatTime(leapDay, "fff") == "000" &&
          formatTime(leapDay, 12) == "12");
    CHECK(isoTime(leapDay) == "2024-02-29T12:45:10Z" && isoTime(0) == "1970-01-01T00:00:00Z");
    CHECK(isoTime(-62135596800LL) == "0001-01-01T00:00:00Z");
    CHECK(dayName(1) == "Monday" && dayName(7) == "Sunday" && dayName(0).empty() &&
          dayName(8).empty());
    CHECK(monthName(1) == "January" && monthName(12) == "December" && monthName(13).empty() &&
          monthName("x").empty());
    CHECK(formatDuration(3909) == "1:05:09" && formatDuration(59.9) == "0:00:59" &&
          formatDuration(-61) == "-0:01:01");
    CHECK(formatDuration(360000) == "100:00:00" && formatDuration("x") == "0:00:00");
    CHECK_EQUAL(formatDuration(-9223372036854775807LL - 1), "-2562047788015215:30:08");
}

static void testParsing() {
    CHECK(parseTime("2024-02-29") == 1709161200 && parseTime(" 2024-02-29 13:45 ") == 1709210700);
    CHECK(parseTime("2024-02-29 13:45:10") == leapDay &&
          parseTime("2024-02-29T12:45:10Z") == leapDay);
    CHECK(parseTime("2024-02-29T14:45:10+02:00") == leapDay &&
          parseTime("2024-02-29T07:15:10-0530") == leapDay);
    CHECK(parseTime("2024-02-29T14:45+02").isInt() &&
          parseTime("2024-02-29T12:45:10.5Z") == 1709210710.5);
    CHECK(parseTime("2024-02-29T12:45:10.000Z").isInt());
    for (const char* wrong :
         {"", "x", "2023-02-29", "2024-13-01", "2024-00-10", "2024-02-29 24:00", "2024-02-29 13:60",
          "2024-2-29", "2024-02-29Z", "2024-02-29 13:45 x", "2024-02-29T13:45:10+", "0000-01-01",
          "2024-02-29T13:45:10+99:00", "2024-02-29T13:45:10.x", "2024-02-29T", "13:45"})
        checkEqual(parseTime(wrong).typeName, "null", wrong, __FILE__, __LINE__);
    CHECK(parseTime("29.02.2024", "dd.MM.yyyy") == 1709161200 &&
          parseTime("20240229134510", "yyyyMMddHHmmss") == leapDay);
    CHECK(parseTime("29 February 2024", "dd MMMM yyyy") == 1709161200 &&
          parseTime("Thu 29 feb 2024", "ddd dd MMM yyyy") == 1709161200);
    CHECK(parseTime("30.02.2024", "dd.MM.yyyy").isNull() &&
          parseTime("29.02.2024x", "dd.MM.yyyy").isNull());
    CHECK(parseTime("29.02.", "dd.MM.yyyy").isNull() && parseTime("", "yyyy").isNull() &&
          parseTime("x", "MMM").isNull());
    CHECK(parseTime("01:00", "HH:mm") == 0 && parseTime("01:00:00.250", "HH:mm:ss.fff") == 0.25);
    CHECK(parseTime(std::string(1000000, '9')).isNull() && parseTime(Value()).isNull() &&
          parseTime(5, 5) == -3600);
}

static void testCalendar() {
    CHECK(makeTime(2024, 2, 29, 13, 45, 10) == leapDay &&
          makeTime(2024, 1, 60, 13, 45, 10) == leapDay);
    CHECK(makeTime(2023, 14, 29, 13, 45, 10) == leapDay &&
          makeTime(2025, -10, 29, 13, 44, 70) == leapDay);
    CHECK(makeTime(0, 1, 1, 0, 0, 0).isNull() && makeTime(2000000000, 1, 1, 0, 0, 0).isNull());
    CHECK(makeTime("2024", "2", "29", "13", "45", "10") == leapDay);
    CHECK(addDays(leapDay, 1) == 1709210710 + 86400 &&
          formatTime(addDays(leapDay, -60), "yyyy-MM-dd HH") == "2023-12-31 13");
    CHECK(formatTime(addMonths(leapDay, 12), "yyyy-MM-dd HH:mm") == "2025-02-28 13:45");
    CHECK(formatTime(addMonths(makeTime(2024, 1, 31, 8, 0, 0), 1), "yyyy-MM-dd HH") ==
          "2024-02-29 08");
    CHECK(formatTime(addMonths(makeTime(2024, 3, 31, 8, 0, 0), -13), "yyyy-MM-dd") == "2023-02-28");
    CHECK(addMonths(leapDay, 1e18).isNull() && addDays(leapDay, 1e18).isNull() &&
          addMonths(leapDay, -1e6).isNull());
    CHECK(addHours(leapDay, 2) == 1709217910 && addHours(leapDay, 0.5) == 1709212510 &&
          addHours(0, 1e300).isInt());
    CHECK(daysBetween(leapDay, addMonths(leapDay, 12)) == 365 &&
          daysBetween(leapDay, leapDay) == 0);
    // From 23:59 to 00:01 the calendar is a day further.
    CHECK_EQUAL(daysBetween(makeTime(2024, 2, 28, 23, 59, 0), makeTime(2024, 2, 29, 0, 1, 0)), 1);
    CHECK(secondsBetween(10, 25) == 15 && secondsBetween(10, 9.5) == -0.5 &&
          secondsBetween("x", 1) == 1);
    CHECK(startOfDay(leapDay) == 1709161200 && daysInMonth(2024, 2) == 29 &&
          daysInMonth(1900, 2) == 28);
    CHECK(daysInMonth(2000, 2) == 29 && daysInMonth(2023, 4) == 30 && daysInMonth(2023, 13) == 0 &&
          daysInMonth(2023, 0) == 0);
    CHECK(isLeapYear(2024) && isLeapYear(2000) && !isLeapYear(1900) && !isLeapYear(2023));
}

static void testSummerTime() {
    // 31 March 2024: 02:00 becomes 03:00. 27 October 2024: 03:00 becomes 02:00.
    CHECK(makeTime(2024, 3, 31, 1, 59, 59) == 1711846799 &&
          makeTime(2024, 3, 31, 3, 0, 0) == 1711846800);
    CHECK_EQUAL(formatTime(1711846800, "HH:mm"), "03:00");
    CHECK_EQUAL(formatTime(makeTime(2024, 3, 31, 2, 30, 0), "HH:mm"), "03:30");
    CHECK(makeTime(2024, 10, 27, 1, 59, 59) == 1729987199 &&
          makeTime(2024, 10, 27, 3, 0, 0) == 1729994400);
    const Value repeated = makeTime(2024, 10, 27, 2, 30, 0);
    CHECK(repeated == 1729989000 || repeated == 1729992600);
    // Clock time is kept over the change: 25 hours pass from the 26th to the 27th October.
    const Value before = makeTime(2024, 10, 26, 12, 0, 0);
    CHECK(secondsBetween(before, addDays(before, 1)) == 90000 &&
          daysBetween(before, addDays(before, 1)) == 1);
    CHECK(startOfDay(makeTime(2024, 10, 27, 12, 0, 0)) == 1729980000);
    bool same = true;
    for (long long t = 1704067200; t < 1735689600; t += 3607)
        same = same && (mktime(localtime(Value(t))) == t || (t >= 1729987200 && t < 1729994400));
    CHECK(same);
}

static void testNow() {
    const Value t = time();
    CHECK(t.isInt() && t.intVal > 1700000000 && secondsBetween(parseTime(now()), t).intVal < 3);
    CHECK(now().size() == 19 && today() == formatTime(time(), "yyyy-MM-dd"));
    CHECK(tickMs().isInt() && clock("ms").isInt() && clock("s").isFloat() && clock("x").isNull());
    CHECK(utcOffset() == 60 || utcOffset() == 120);
    CHECK(watchMs("never") == -1 && startWatch("w") && watchMs("w").intVal >= 0 &&
          watchMs("w").intVal < 5000);
}

int main() {
    testFields();
    testWeeks();
    testFormats();
    testParsing();
    testCalendar();
    testSummerTime();
    testNow();
    return finishChecks();
}
