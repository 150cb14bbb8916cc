// Web requests to the server of web_server.py, whose address is the only argument.
#include "import.hpp"

#include "checks.h"
#include "lists.h"

static std::string base;

static void testAnswers() {
    CHECK(httpGet(base + "/hello") == "hello \xC3\xA4" && httpStatus() == 200);
    CHECK(httpGet(base + "/missing").empty() && httpStatus() == 404 &&
          lastError() == "http: status 404");
    CHECK(httpGet(base + "/echo-header", dictWith({{"X-Test", "one"}})) == "one");
    CHECK(httpGet(base + "/echo-header", dictWith({{"X-Test", "one\r\nX-Evil: 1"}})).empty());
    CHECK(httpPost(base + "/echo", "a=1") == "application/x-www-form-urlencoded:a=1" &&
          httpPost(base + "/echo", "{}", "application/json") == "application/json:{}");
    CHECK(httpGet(base + "/redirect") == "hello \xC3\xA4" &&
          httpGet(base + "/query?a=1&b=%20#part") == "a=1&b=%20");
    CHECK(httpUserAgent("Test/1") && httpGet(base + "/agent") == "Test/1");
}

static void testWholeAnswers() {
    Value answer =
        httpRequest("put", base + "/echo", dictWith({{"Content-Type", "text/x"}}), "body");
    CHECK(answer["ok"].boolVal && answer["status"] == 200 && answer["body"] == "text/x:body" &&
          answer["error"] == "");
    CHECK(answer["headers"]["x-server"] == "checks" &&
          httpHead(base + "/hello")["x-server"] == "checks");
    answer = httpRequest("GET", base + "/missing", Value(), "");
    CHECK(!answer["ok"].boolVal && answer["status"] == 404 && answer["body"] == "nothing here");
}

static void testJsonAndFiles() {
    CHECK(httpGetJson(base + "/json").toString() == "{a: [1, 2.500000]}" &&
          httpGetJson(base + "/hello").isNull());
    CHECK(httpPostJson(base + "/echo-json", listOf({1, "x"})).toString() == "[1, x]" &&
          httpPostJson(base + "/missing", 1).isNull());
    CHECK(httpDownload(base + "/hello", "h.txt") && readFile("h.txt") == "hello \xC3\xA4");
    CHECK(!httpDownload(base + "/missing", "h.txt") && readFile("h.txt") == "hello \xC3\xA4" &&
          !fileExists("h.txt.orx~"));
    Value answer = httpUpload(base + "/echo", "h.txt", "text/plain");
    CHECK(answer["ok"].boolVal && answer["body"] == "text/plain:hello \xC3\xA4");
}

// A server that never answers, one that stops in the middle, one that sends drops forever, one that
// sends too much.
static void testBadServers() {
    CHECK(httpTimeout(1000));
    const unsigned long long start = GetTickCount64();
    CHECK(httpGet(base + "/silent").empty() && !lastError().empty());
    CHECK(httpGet(base + "/half").empty());
    CHECK(httpGet(base + "/drops").empty());
    CHECK(GetTickCount64() - start < 40000);
    CHECK(httpMaxBytes(1000) && httpGet(base + "/large").empty() &&
          httpRequest("GET", base + "/large", Value(), "")["error"] ==
              "the answer is larger than allowed");
    CHECK(httpGet(base + "/garbage").empty() && httpTimeout(10000) &&
          httpGet(base + "/hello") == "hello \xC3\xA4");
}

int main(int count, char** words) {
    base = count > 1 ? words[1] : "";
    testAnswers();
    testWholeAnswers();
    testJsonAndFiles();
    testBadServers();
    return finishChecks();
}
