// math2, numeric and the bounds of math. Expected numbers are published or counted by hand.
#include "import.hpp"

#include "../checks.h"
#include "../lists.h"

static const long long largest = 9223372036854775807LL;

static bool isNear(const Value& actual, double expected) {
    const double away = actual.floatVal - expected;
    return actual.isFloat() && away < 1e-9 && away > -1e-9;
}

static void testFunctionsOfNumbers() {
    CHECK(isNear(sinh(Value(1)), 1.1752011936438014) && isNear(cosh(Value(1)), 1.5430806348152437));
    CHECK(isNear(tanh(Value("1")), 0.7615941559557649) && isNear(cbrt(Value(27)), 3.0));
    CHECK(isNear(cbrt(Value(-8)), -2.0) && isNear(log2(Value(8)), 3.0));
    CHECK(log2(Value(0)) == 0.0 && log2(Value(-4)) == 0.0 && log2(Value("x")) == 0.0);
    CHECK(isNear(hypot(Value(3), Value(4)), 5.0));
    CHECK(isNear(toRadians(180), 3.141592653589793) && isNear(toDegrees(3.141592653589793), 180.0));
    CHECK(roundTo(17, 5).isInt() && roundTo(17, 5) == 15 && roundTo(18, 5) == 20);
    CHECK(roundTo(-18, 5) == -20 && isNear(roundTo(0.37, 0.25), 0.25) && roundTo(7, 0) == 7);
    CHECK(isNear(fraction(2.75), 0.75) && isNear(fraction(-2.75), -0.75) && fraction("x") == 0.0);
}

static void testNumberTheory() {
    CHECK(gcd(12, 18) == 6 && gcd(-12, 18) == 6 && gcd(0, 7) == 7 && gcd(0, 0) == 0);
    CHECK(gcd("12", 18.9) == 6 && gcd(-largest - 1, 0).isFloat());
    CHECK(lcm(4, 6) == 12 && lcm(-4, 6) == 12 && lcm(0, 5) == 0 && lcm(21, 6) == 42);
    CHECK(isNear(lcm(largest, 2), 18446744073709551614.0));
    CHECK(factorial(5) == 120 && factorial(0) == 1 && factorial(20) == 2432902008176640000LL);
    CHECK(factorial(-1) == 0 && factorial(21).isFloat() && factorial(21) == 51090942171709440000.0);
    CHECK(factorial(1000000000).floatVal > 1e308 && factorial("x") == 1);
    CHECK(binomial(49, 6) == 13983816 && binomial(5, 0) == 1 && binomial(5, 6) == 0);
    CHECK(binomial(5, -1) == 0 && binomial(66, 33) == 7219428434016265740LL);
    CHECK(binomial(68, 34).isFloat() && binomial(largest, largest / 2).floatVal > 1e308);
    CHECK(fibonacci(10) == 55 && fibonacci(1) == 1 && fibonacci(0) == 0 && fibonacci(-3) == 0);
    CHECK(fibonacci(92) == 7540113804746346429LL && fibonacci(93) == 12200160415121876738.0);
    CHECK(fibonacci(largest).floatVal > 1e308);
}

static void testPrimes() {
    int found = 0;
    for (int i = -5; i < 1000; ++i) found += isPrime(i);
    CHECK_EQUAL(found, 168);
    CHECK(isPrime(2147483647) && !isPrime(2147483647LL * 2147483647LL));
    CHECK(isPrime(9223372036854775783LL) && !isPrime(largest) && !isPrime(3215031751LL));
    CHECK(!isPrime(7.5) && isPrime(7.0) && isPrime("97") && !isPrime(Value()) && !isPrime(1));
    CHECK_EQUAL(textOf(primeFactors(360)), "[2, 2, 2, 3, 3, 5]");
    CHECK_EQUAL(textOf(primeFactors(97)), "[97]");
    CHECK_EQUAL(textOf(primeFactors(largest)), "[7, 7, 73, 127, 337, 92737, 649657]");
    CHECK_EQUAL(textOf(primeFactors(4611686014132420609LL)), "[2147483647, 2147483647]");
    CHECK_EQUAL(textOf(primeFactors(1018081)), "[1009, 1009]");
    CHECK(primeFactors(1).arrayVal.empty() && primeFactors(-8).arrayVal.empty());
    // The largest product of two primes below 2 to the power 63 with both near its root.
    CHECK_EQUAL(primeFactors(3037000493LL * 3037000453LL).arrayVal.size(), 2u);
}

static void testStatistics() {
    const Value none = std::vector<Value>();
    const Value known = listOf({2, 4, 4, 4, 5, 5, 7, 9});
    CHECK(sum(listOf({1, 2, 3})).isInt() && sum(listOf({1, 2, 3})) == 6);
    CHECK(sum(listOf({1, 2.5})) == 3.5 && sum(none) == 0 && sum("x") == 0 &&
          sum(listOf({"2", 1})) == 3.0);
    CHECK(sum(listOf({largest, 1})).isFloat());
    CHECK(product(listOf({2, 3, 4})) == 24 && product(none) == 1 &&
          product(listOf({2, 0.5})) == 1.0);
    CHECK(product(listOf({largest, 2})).isFloat());
    CHECK(mean(known) == 5.0 && mean(none) == 0.0 && mean(Value()) == 0.0);
    CHECK(variance(known) == 4.0 && stdDev(known) == 2.0 && variance(none) == 0.0 &&
          stdDev(5) == 0.0);
    CHECK(median(listOf({1, 5, 2})) == 2.0 && median(listOf({4, 1, 3, 2})) == 2.5 &&
          median(none) == 0.0);
    CHECK(mode(listOf({1, 2, 2, 3})) == 2 && mode(listOf({3, 1, 1, 3})) == 3 &&
          mode(none).isNull());
    CHECK(mode(listOf({"1", 1, 1.0})) == 1);
    CHECK(minOf(listOf({3, 1, 2.5})) == 1 && maxOf(listOf({3, 1, 2.5})) == 3 &&
          minOf(none).isNull());
    CHECK(maxOf(none).isNull() && maxOf(listOf({"pear", "apple"})) == "pear");
    const Value five = listOf({15, 20, 35, 40, 50});
    CHECK(isNear(percentile(five, 40), 29.0) && percentile(five, 0) == 15.0);
    CHECK(percentile(five, 100) == 50.0 && percentile(five, 250) == 50.0 &&
          percentile(five, -1) == 15.0);
    CHECK(percentile(none, 50) == 0.0);
}

static void testGeometry() {
    CHECK(lerp(10, 20, 0.5) == 15.0 && lerp(10, 20, 2) == 30.0);
    CHECK(mapRange(50, 0, 100, 0, 255) == 127.5 && mapRange(5, 1, 1, 7, 9) == 7.0);
    CHECK(mapRange(0, 10, -10, 0, 1) == 0.5);
    CHECK(distance(0, 0, 3, 4) == 5.0 && distance("1", 1, 1, 1) == 0.0);
    CHECK(angleOf(0, 0, 1, 0) == 0.0 && angleOf(0, 0, 0, 5) == 90.0 &&
          angleOf(0, 0, -1, 0) == 180.0);
    CHECK(isNear(angleOf(0, 0, 1, -1), 315.0) && angleOf(2, 2, 2, 2) == 0.0);
    CHECK(pointInRect(5, 5, 0, 0, 10, 10) && pointInRect(0, 0, 0, 0, 10, 10));
    CHECK(!pointInRect(10, 5, 0, 0, 10, 10) && !pointInRect(5, -1, 0, 0, 10, 10));
    CHECK(!pointInRect(0, 0, 0, 0, 0, 0));
}

static void testNumberTexts() {
    CHECK(parseInt("42") == 42 && parseInt(" -7 ") == -7 && parseInt("+5") == 5 &&
          parseInt(6.0) == 6);
    CHECK(parseInt("").isNull() && parseInt("4x").isNull() && parseInt("2.5").isNull());
    CHECK(parseInt("-").isNull() && parseInt("0x10").isNull() && parseInt(Value()).isNull());
    CHECK(parseInt("9223372036854775807") == largest && parseInt("9223372036854775808").isNull());
    CHECK(parseInt("-9223372036854775808") == -largest - 1 &&
          parseInt("-9223372036854775809").isNull());
    CHECK(parseNumber("2.5") == 2.5 && parseNumber("7").isInt() && parseNumber("1e3") == 1000.0);
    CHECK(parseNumber("1e999").isNull() && parseNumber("1,5").isNull() && parseNumber("").isNull());
    CHECK(parseNumber(true).isNull() && parseNumber(std::vector<Value>()).isNull());
    CHECK(formatNumber(2.5, 2) == "2.50" && formatNumber(1.005, 2) == "1.01" &&
          formatNumber(2.5, 0) == "3");
    CHECK(formatNumber(-2.5, 0) == "-3" && formatNumber(-0.001, 2) == "0.00" &&
          formatNumber(7, 2) == "7.00");
    CHECK(formatNumber(largest, 1) == "9223372036854775807.0" && formatNumber("x", 1) == "0.0");
    CHECK_EQUAL(formatNumber(1e308, 999).size(), 309u + 1 + 30);
    CHECK(formatLocal(1234567.891, 2) == "1,234,567.89" && formatLocal(-999, 0) == "-999");
    CHECK(formatThousands(1234567) == "1,234,567" && formatThousands(999) == "999");
    CHECK(formatThousands(-1234.5) == "-1,234.5" && formatThousands(1e21) == "1e+21");
    CHECK(formatPercent(0.125, 1) == "12.5%" && formatPercent(1, 0) == "100%");
    CHECK(formatBytes(512) == "512 B" && formatBytes(1024) == "1 KB" &&
          formatBytes(1572864) == "1.5 MB");
    CHECK(formatBytes(1048575) == "1 MB" && formatBytes(-2048) == "-2 KB" &&
          formatBytes(0) == "0 B");
    CHECK(formatBytes(largest) == "8 EB");
    CHECK(formatSci(1500, 2) == "1.50e+03" && formatSci(0, 0) == "0e+00" &&
          formatSci(-0.00012, 1) == "-1.2e-04");
    CHECK(ordinal(1) == "1st" && ordinal(22) == "22nd" && ordinal(3) == "3rd" &&
          ordinal(11) == "11th");
    CHECK(ordinal(112) == "112th" && ordinal(0) == "0th" && ordinal(-1) == "-1st" &&
          ordinal(-13) == "-13th");
}

static void testRomanNumerals() {
    CHECK(toRoman(1984) == "MCMLXXXIV" && toRoman(3999) == "MMMCMXCIX" && toRoman(4) == "IV");
    CHECK(toRoman(0).empty() && toRoman(4000).empty() && toRoman(-1).empty());
    CHECK(fromRoman("MCMLXXXIV") == 1984 && fromRoman("xiv") == 14 && fromRoman("IIII") == 0);
    CHECK(fromRoman("") == 0 && fromRoman("ABC") == 0 && fromRoman("IM") == 0);
    CHECK(fromRoman(std::string(1000000, 'M')) == 0);
    bool same = true;
    for (int i = 1; i < 4000; ++i) same = same && fromRoman(toRoman(i)) == i;
    CHECK(same);
}

static void testBases() {
    CHECK(toHex(255) == "FF" && toHex(-1) == "FFFFFFFFFFFFFFFF" && toHex(0) == "0");
    CHECK(fromHex("ff") == 255 && fromHex("0xFF") == 255 && fromHex("FFFFFFFFFFFFFFFF") == -1);
    CHECK(fromHex("").isNull() && fromHex("G").isNull() && fromHex("10000000000000000").isNull());
    CHECK(fromHex("0x").isNull());
    CHECK(toBinary(10) == "1010" && fromBinary("1010") == 10 && fromBinary("2").isNull());
    CHECK_EQUAL(toBinary(-1), std::string(64, '1'));
    CHECK(toBase(255, 36) == "73" && toBase(-255, 16) == "-FF" && toBase(5, 1).empty() &&
          toBase(5, 37).empty());
    CHECK_EQUAL(toBase(-largest - 1, 10), "-9223372036854775808");
    CHECK(fromBase("73", 36) == 255 && fromBase("-FF", 16) == -255 && fromBase("z", 36) == 35);
    CHECK(fromBase("-9223372036854775808", 10) == -largest - 1);
    CHECK(fromBase("9223372036854775808", 10).isNull() && fromBase("8", 8).isNull() &&
          fromBase("1", 0).isNull());
    CHECK(fromBase("", 10).isNull() && fromBase("--1", 10).isNull());
}

static void testBits() {
    CHECK(bitAnd(12, 10) == 8 && bitOr(12, 10) == 14 && bitXor(12, 10) == 6 && bitNot(0) == -1);
    CHECK(shiftLeft(1, 10) == 1024 && shiftLeft(1, 63) == -largest - 1 && shiftLeft(1, 64) == 0);
    CHECK(shiftLeft(1, -1) == 0 && shiftRight(1024, 3) == 128 && shiftRight(-8, 1) == -4 &&
          shiftRight(1, 64) == 0);
    CHECK(hasBit(5, 2) && !hasBit(5, 1) && hasBit(-1, 63) && !hasBit(-1, 64) && !hasBit(1, -1));
}

static void testSeries() {
    const Value none = std::vector<Value>();
    CHECK_EQUAL(range(1, 4).toString(), "[1, 2, 3, 4]");
    CHECK(range(3, 3).toString() == "[3]" && range(4, 1).arrayVal.empty() &&
          range("1", 2.9).toString() == "[1, 2]");
    CHECK_EQUAL(range(10, 0, -5).toString(), "[10, 5, 0]");
    CHECK_EQUAL(range(0, 1, 0.1).arrayVal.size(), 11u);
    CHECK(range(0, 1, 0.1).arrayVal[0].isFloat() && range(0, 5, 0).arrayVal.empty());
    CHECK(range(0, 1e18).arrayVal.empty() && range(0, 5, -1).arrayVal.empty() &&
          range(0, 1, 1e-300).arrayVal.empty());
    CHECK_EQUAL(textOf(linspace(0, 1, 5)), "[0, 0.25, 0.5, 0.75, 1]");
    CHECK(linspace(3, 9, 1).toString() == "[3.000000]" && linspace(0, 1, 0).arrayVal.empty());
    CHECK(linspace(0, 1, 1e9).arrayVal.empty());
    CHECK_EQUAL(cumulative(listOf({1, 2, 3})).toString(), "[1, 3, 6]");
    CHECK_EQUAL(textOf(cumulative(listOf({1, 0.5}))), "[1, 1.5]");
    CHECK(differences(listOf({1, 4, 9})).toString() == "[3, 5]" &&
          differences(none).arrayVal.empty());
    CHECK(textOf(movingAverage(listOf({1, 2, 3, 4}), 2)) == "[1.5, 2.5, 3.5]");
    CHECK(movingAverage(listOf({1}), 2).arrayVal.empty() &&
          movingAverage(listOf({1}), 0).arrayVal.empty());
    const Value xs = listOf({0, 10, 20}), ys = listOf({0, 100, 0});
    CHECK(interpolate(xs, ys, 2.5) == 25.0 && interpolate(xs, ys, 15) == 50.0 &&
          interpolate(xs, ys, -5) == 0.0);
    CHECK(interpolate(xs, ys, 99) == 0.0 && interpolate(xs, none, 1).isNull() &&
          interpolate(none, none, 1).isNull());
    const Value line = linearFit(listOf({1, 2, 3}), listOf({3, 5, 7}));
    CHECK(isNear(line.mapVal.at("slope"), 2.0) && isNear(line.mapVal.at("intercept"), 1.0));
    CHECK(isNear(line.mapVal.at("r"), 1.0) && linearFit(listOf({1, 1}), listOf({1, 2})).isNull());
    CHECK(linearFit(none, none).isNull());
    CHECK_EQUAL(histogram(listOf({1, 2, 2, 3, 9}), 4).toString(), "[3, 1, 0, 1]");
    CHECK(histogram(none, 2).toString() == "[0, 0]" && histogram(xs, 0).arrayVal.empty());
    CHECK(histogram(listOf({5, 5}), 2).toString() == "[2, 0]" &&
          histogram(xs, 1e12).arrayVal.empty());
}

static void testMatrices() {
    const Value a = listOf({listOf({1, 2}), listOf({3, 4})});
    const Value b = listOf({listOf({0, 1}), listOf({1, 0})});
    const Value ragged = listOf({listOf({1, 2}), listOf({3})});
    CHECK_EQUAL(textOf(matrixNew(2, 3)), "[[0, 0, 0], [0, 0, 0]]");
    CHECK(matrixNew(0, 3).arrayVal.empty() && matrixNew(1e9, 1e9).arrayVal.empty());
    CHECK_EQUAL(textOf(matrixMultiply(a, b)), "[[2, 1], [4, 3]]");
    CHECK(matrixMultiply(a, listOf({listOf({1, 2})})).isNull() &&
          matrixMultiply(ragged, a).isNull());
    CHECK(matrixMultiply(1, "x").isNull());
    CHECK_EQUAL(textOf(transpose(listOf({listOf({1, 2, 3}), listOf({4, 5, 6})}))),
                "[[1, 4], [2, 5], [3, 6]]");
    CHECK(transpose(ragged).isNull() && transpose(5).isNull());
    CHECK(isNear(determinant(a), -2.0) && determinant(ragged) == 0.0 &&
          determinant(Value()) == 0.0);
    CHECK(isNear(determinant(listOf({listOf({2, 0, 1}), listOf({1, 3, 2}), listOf({1, 1, 4})})),
                 18.0));
    CHECK(determinant(listOf({listOf({1, 2}), listOf({2, 4})})) == 0.0);
    const Value solved = solveLinear(listOf({listOf({2, 1}), listOf({1, 3})}), listOf({3, 5}));
    CHECK(isNear(solved.arrayVal[0], 0.8) && isNear(solved.arrayVal[1], 1.4));
    CHECK(solveLinear(listOf({listOf({1, 2}), listOf({2, 4})}), listOf({1, 2})).isNull());
    CHECK(solveLinear(a, listOf({1})).isNull() && solveLinear("x", 1).isNull());
    CHECK(dotProduct(listOf({1, 2, 3}), listOf({4, 5, 6})) == 32.0 &&
          dotProduct(a, listOf({1})).isNull());
}

static void testBoundsOfMath() {
    CHECK(abs(Value(-largest - 1)).isInt() && abs(Value(-largest)) == largest);
    CHECK(round(Value(1.005), Value(2)) == 1.01 && round(Value(-1.5)) == -2);
    CHECK(floor(Value(1e300)) == largest && toInt(1e300) == 2147483647);
}

int main() {
    testFunctionsOfNumbers();
    testNumberTheory();
    testPrimes();
    testStatistics();
    testGeometry();
    testNumberTexts();
    testRomanNumerals();
    testBases();
    testBits();
    testSeries();
    testMatrices();
    testBoundsOfMath();
    return finishChecks();
}
