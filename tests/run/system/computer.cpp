// Other programs, settings, the computer, and the parts of web requests that need no server.
#include "import.hpp"

#include "checks.h"
#include "lists.h"

static void testPrograms() {
    CHECK(runProgram("cmd /c exit 3") == 3 && runProgram("no such program") == -1 &&
          !startProgram("no such program"));
    Value result = runCapture("cmd /c echo hello");
    CHECK(result["code"] == 0 && result["output"] == "hello\n");
    result = runCapture("cmd /c exit 5", 20000);
    CHECK(result["code"] == 5 && result["output"] == "" && runCapture("", 10)["code"] == -1);
    CHECK(startProgram("cmd /c exit 0") && runCapture("no such program")["code"] == -1);
}

// A program that does not end is ended; its output until then is kept.
static void testEndlessPrograms() {
    const unsigned long long start = GetTickCount64();
    clearError();
    Value result = runCapture("cmd /c for /L %i in (0,0,1) do @rem", 1000);
    CHECK(result["code"] == -1 && !lastError().empty() && GetTickCount64() - start < 20000);
}

static void testArguments() {
    CHECK(commandArgs().isContainer() && commandArgs().arrayVal.empty() &&
          processId() == (int)GetCurrentProcessId());
    CHECK(quoteArg("plain") == "plain" && quoteArg("") == "\"\"" && quoteArg("a b") == "\"a b\"");
    CHECK_EQUAL(quoteArg("a\"b"), "\"a\\\"b\"");
    CHECK_EQUAL(quoteArg("c:\\my dir\\"), "\"c:\\my dir\\\\\"");
    CHECK_EQUAL(quoteArg("a\\\" b"), "\"a\\\\\\\" b\"");
    for (const char* text : {"a b", "c:\\my dir\\", "q\"x\" y", "\\\\", "a\\\\\" b"}) {
        int count = 0;
        const std::string wide = orxWide("p " + quoteArg(text));
        LPWSTR* words = CommandLineToArgvW((LPCWSTR)wide.c_str(), &count);
        CHECK(count == 2 && orxUtf8(Value::makeHandle(words[1]), lstrlenW(words[1])) == text);
        LocalFree(words);
    }
}

static void testSettings() {
    CHECK(saveSetting("OrxTest", "int", 5) && saveSetting("OrxTest", "double", 2.5) &&
          saveSetting("OrxTest", "bool", true));
    CHECK(saveSetting("OrxTest", "text", "\xC3\xA4 \xE4\xB8\xAD") &&
          saveSetting("OrxTest", "odd", "d:x") && saveSetting("OrxTest", "big", 1LL << 40));
    CHECK(loadSetting("OrxTest", "int", 0) == 5 && loadSetting("OrxTest", "double", 0) == 2.5 &&
          loadSetting("OrxTest", "bool", 0) == true);
    CHECK(loadSetting("OrxTest", "text", "") == "\xC3\xA4 \xE4\xB8\xAD" &&
          loadSetting("OrxTest", "odd", "") == "d:x");
    CHECK(loadSetting("OrxTest", "big", 0) == (1LL << 40) &&
          loadSetting("OrxTest", "none", "f") == "f" && loadSetting("OrxNone", "x", 7) == 7);
    CHECK(deleteSetting("OrxTest", "int") && !deleteSetting("OrxTest", "int") &&
          loadSetting("OrxTest", "int", 0) == 0);
    CHECK(!saveSetting("", "x", 1) && !saveSetting("a\\b", "x", 1) &&
          loadSetting("a\\b", "x", 3) == 3);
    CHECK(registryWrite("HKCU\\Software\\OrxTest", "n", 7) &&
          registryRead("hkcu\\Software\\OrxTest", "n") == 7);
    CHECK(!registryWrite("HKLM\\Software\\OrxTest", "n", 7) &&
          !registryDelete("HKLM\\Software\\OrxTest", "n") && !registryWrite("HKCU", "n", 1));
    CHECK(registryDelete("HKCU\\Software\\OrxTest", "n") &&
          registryRead("HKCU\\Software\\OrxTest", "n").isNull() && registryRead("x", "y").isNull());
    CHECK(setAutoStart("OrxTest", true) && setAutoStart("OrxTest", false) &&
          setAutoStart("OrxTest", false) && !setAutoStart("", true));
}

static void testComputer() {
    CHECK(osBits() == 64 && cpuCount() >= 1 && memoryTotal().intVal > 0 &&
          memoryFree().intVal > 0 && memoryUsed().intVal > 0);
    CHECK(osVersion().compare(0, 7, "Windows") == 0 && !languageName().empty() &&
          uptimeMs().intVal > 0 && screenDpi() > 0);
    CHECK(screenCount() >= 0 && batteryPercent() >= -1 && batteryPercent() <= 100 &&
          volumeSerial("C:\\").size() == 8);
    CHECK(volumeSerial("").empty() && timeZoneName().size() < 200 &&
          (isDarkMode() || !isDarkMode()));
    CHECK(singleInstance("OrxTest") && singleInstance("OrxTest") &&
          isProgramRunning("LIBRARY_computer.exe") && !isProgramRunning("none.exe"));
    CHECK(expandPath("%windir%\\x") == getEnvironmentVariable("windir") + "\\x" &&
          expandPath("%nope%") == "%nope%");
    CHECK(getCurrentDirectory().size() > 2 && sleepMs(1) && sleepMs(-5) && isAdmin() == isAdmin());
}

// RFC 3986 and the form encoding.
static void testAddresses() {
    CHECK(urlEncode("a b&c/\xC3\xA4~-_.") == "a%20b%26c%2F%C3%A4~-_." &&
          urlDecode("a%20b%zz%C3%A4%") == "a b%zz\xC3\xA4%");
    Value parts = urlParts("https://user:pw@Example.org:8080/a/b?x=1#top");
    CHECK(parts["scheme"] == "https" && parts["host"] == "Example.org" && parts["port"] == 8080 &&
          parts["path"] == "/a/b");
    CHECK(parts["query"] == "x=1" && parts["fragment"] == "top" &&
          urlParts("http://h")["port"] == 80);
    CHECK(urlParts("/only/path?q")["path"] == "/only/path" &&
          urlParts("http://[::1]:81/")["host"] == "[::1]" && urlParts("")["port"] == 0);
    CHECK(queryText(dictWith({{"a b", "1&2"}, {"c", 3}})) == "a%20b=1%262&c=3" &&
          queryText(5).empty());
    CHECK(parseQuery("?a+b=1%262&c=3&d")["a b"] == "1&2" &&
          parseQuery("x=%").toString() == "{x: %}" && parseQuery("").mapVal.empty());
}

static void testSettingsOfRequests() {
    CHECK(httpTimeout(2000) && !httpTimeout(0) && !httpTimeout(999999999) &&
          httpUserAgent("Test/1") && !httpUserAgent(""));
    CHECK(httpMaxBytes(1000) && !httpMaxBytes(0) && httpStatus() == 0);
}

// Nothing listens on port 9 of this computer; other schemes never leave the program.
static void testUnreachable() {
    for (const char* url : {"http://127.0.0.1:9/", "ftp://example.org/", "file:///c:/x", "",
                            "http://", "no address", "http://[", "https://127.0.0.1:9/"}) {
        clearError();
        CHECK(httpGet(url).empty() && !lastError().empty() && httpStatus() == 0 &&
              !httpDownload(url, "none.bin"));
        CHECK(!httpRequest("GET", url, Value(), "")["ok"].boolVal && httpGetJson(url).isNull() &&
              httpHead(url).mapVal.empty());
    }
    CHECK(!fileExists("none.bin") && !fileExists("none.bin.orx~") &&
          !httpUpload("http://127.0.0.1:9/", "none", "x")["ok"].boolVal);
    CHECK(!httpRequest("BAD METHOD", "http://127.0.0.1:9/", 5, 5)["ok"].boolVal);
}

int main() {
    testPrograms();
    testEndlessPrograms();
    testArguments();
    testSettings();
    testComputer();
    testAddresses();
    testSettingsOfRequests();
    testUnreachable();
    return finishChecks();
}
