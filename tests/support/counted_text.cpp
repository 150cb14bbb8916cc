#include "support/counted_text.h"

#include <algorithm>
#include <charconv>
#include <set>

namespace Orvane {

namespace {

bool isDigit(char character) { return character >= '0' && character <= '9'; }

// Takes the digits that begin the text off it.
std::string_view takeNumber(std::string_view& text) {
    const auto end = std::find_if_not(text.begin(), text.end(), isDigit);
    const std::string_view number(text.begin(), end);
    text = std::string_view(end, text.end());
    return number;
}

// Takes everything up to the next digit.
std::string_view takeWords(std::string_view& text) {
    const auto end = std::find_if(text.begin(), text.end(), isDigit);
    const std::string_view words(text.begin(), end);
    text = std::string_view(end, text.end());
    return words;
}

long long valueOf(std::string_view number) {
    long long value = -1;
    std::from_chars(number.data(), number.data() + number.size(), value);
    return value;
}

} // namespace

bool differInCountersOnly(std::string_view first, std::string_view second) {
    std::set<long long> amounts;
    while (!first.empty() || !second.empty()) {
        if (takeWords(first) != takeWords(second)) return false;
        const std::string_view earlier = takeNumber(first);
        const std::string_view later = takeNumber(second);
        if (earlier != later) amounts.insert(valueOf(later) - valueOf(earlier));
    }
    constexpr std::size_t counters = 2;
    return amounts.size() <= counters && (amounts.empty() || *amounts.begin() > 0);
}

} // namespace Orvane
