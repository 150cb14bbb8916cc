// Files, folders, settings files, logs and encrypted files, in an empty working folder.
#include "import.hpp"

#include "checks.h"
#include "lists.h"

static void testFiles() {
    CHECK(!fileExists("a.txt") && writeFile("a.txt", "one") && fileExists("a.txt") &&
          !directoryExists("a.txt"));
    CHECK(fileSize("a.txt") == 3 && copyFile("a.txt", "b.txt") && sameFile("a.txt", "b.txt"));
    CHECK(appendFile("b.txt", "\xC3\xA4") && fileSize("b.txt") == 5 && !sameFile("a.txt", "b.txt"));
    CHECK(copyFile("b.txt", "a.txt") && readFile("a.txt") == "one\xC3\xA4" &&
          moveFile("a.txt", "c d \xE4\xB8\xAD.txt"));
    CHECK(!fileExists("a.txt") && readFile("c d \xE4\xB8\xAD.txt") == "one\xC3\xA4" &&
          !moveFile("a.txt", "x"));
    CHECK(setFileTime("b.txt", 1600000000) && fileTime("b.txt") == 1600000000 &&
          touchFile("b.txt"));
    CHECK(fileTime("b.txt").intVal > 1700000000 && touchFile("new.txt") &&
          fileSize("new.txt") == 0);
    CHECK(setReadOnlyFile("b.txt", true) && isReadOnlyFile("b.txt") && !writeFile("b.txt", "x"));
    CHECK(!fileExists("b.txt.orx~") && readFile("b.txt") == "one\xC3\xA4" &&
          setReadOnlyFile("b.txt", false));
    CHECK(deleteFile("b.txt") && !deleteFile("b.txt") && !isReadOnlyFile("b.txt") &&
          deleteFile("new.txt"));
    CHECK(deleteFile("c d \xE4\xB8\xAD.txt"));
}

static void testMissing() {
    for (const Value& path : {Value("none.txt"), Value(""), Value(), Value(5), Value("a\\b\\c"),
                              Value("?*<>|"), Value(std::vector<Value>()), Value("\xFF")}) {
        clearError();
        CHECK(fileSize(path) == -1 && fileTime(path) == -1 && !lastError().empty());
        CHECK(readFile(path).empty() && readLines(path).arrayVal.empty() &&
              readCsv(path).arrayVal.empty());
        CHECK(!deleteFile(path) && !copyFile(path, "y") && !setFileTime(path, 0) &&
              !setReadOnlyFile(path, true));
        CHECK(!recycleFile(path) && !deleteTree(path) && !deleteDirectory(path) &&
              !copyTree(path, "y"));
        CHECK(readJson(path).isNull() && hashFile(path, "md5").empty() &&
              !decryptFile(path, "y", "p"));
        CHECK(!sameFile(path, path) && !fileExists(path) && findFiles(path, "*").arrayVal.empty());
    }
}

static void testFolders() {
    CHECK(createDirectory("t\\u\\v") && directoryExists("t\\u\\v") && createDirectory("t\\u\\v") &&
          !fileExists("t"));
    CHECK(writeFile("t\\1.txt", "1") && writeFile("t\\u\\2.TXT", "2") &&
          writeFile("t\\u\\v\\3.log", "3"));
    CHECK_EQUAL(listFiles("t").toString(), "[1.txt]");
    CHECK_EQUAL(listFolders("t").toString(), "[u]");
    CHECK_EQUAL(findFiles("t", "*.txt").toString(), "[t\\1.txt, t\\u\\2.TXT]");
    CHECK(findFiles("t", "?.*").arrayVal.size() == 3 && findFiles("t", "*x*").arrayVal.size() == 2);
    CHECK(listFiles("t", "*.log").arrayVal.empty() && listFiles("none").arrayVal.empty());
    CHECK(!deleteDirectory("t\\u") && copyTree("t", "t2") && readFile("t2\\u\\v\\3.log") == "3");
    CHECK(!copyTree("t", "t\\inside") && !copyTree("t", "T") &&
          setReadOnlyFile("t2\\1.txt", true) && deleteTree("t2"));
    CHECK(!directoryExists("t2") && createDirectory("empty") && deleteDirectory("empty"));
    CHECK(!createDirectory("t\\1.txt\\x") && !createDirectory("") && !createDirectory("t\\1.txt"));
}

static void testDangerousTrees() {
    const std::string windows = getEnvironmentVariable("windir");
    for (const Value& path :
         {Value("C:\\"), Value("C:"), Value("c:/"), Value("\\\\?\\C:\\"), Value(windows),
          Value(windows + "\\system32"), Value(windows + "\\.."), Value(knownFolder("profile")),
          Value(knownFolder("profile") + "\\..")})
        CHECK(!deleteTree(path));
    CHECK(directoryExists(windows) && directoryExists(knownFolder("profile")));
}

static void testLongPaths() {
    std::string path = "long";
    for (int i = 0; i < 12; ++i) path += "\\" + std::string(40, (char)('a' + i));
    CHECK(path.size() > 400 && createDirectory(path) && directoryExists(path));
    CHECK(writeFile(path + "\\f.txt", "deep") && readFile(path + "\\f.txt") == "deep");
    CHECK(findFiles("long", "*").arrayVal.size() == 1 && deleteTree("long") &&
          !directoryExists("long"));
}

static void testPaths() {
    Value info = getPathInfo("t\\u\\2.TXT");
    CHECK(info["directory"] == "t\\u" && info["name"] == "2.TXT" && info["stem"] == "2" &&
          info["extension"] == ".txt");
    CHECK(info["exists"].boolVal && !info["isDirectory"].boolVal && info["size"] == 1 &&
          info["modified"].intVal > 1700000000);
    info = getPathInfo("none");
    CHECK(!info["exists"].boolVal && info["size"] == -1 && getPathInfo("t")["isDirectory"].boolVal);
    CHECK(joinPath("a", "b") == "a\\b" && joinPath("a\\", "b") == "a\\b" &&
          joinPath("a", "\\b") == "a\\b");
    CHECK(joinPath("a/", "/b") == "a/b" && joinPath("", "b") == "b" && joinPath("a", "") == "a");
    CHECK(fileName("C:\\a\\b.txt") == "b.txt" && fileName("a/b") == "b" && fileName("C:x") == "x" &&
          fileName("").empty());
    CHECK(fileStem("a\\b.tar.gz") == "b.tar" && fileExtension("b.TAR.GZ") == ".gz" &&
          fileExtension(".profile").empty());
    CHECK(fileDirectory("C:\\a\\b") == "C:\\a" && fileDirectory("C:\\a") == "C:\\" &&
          fileDirectory("a").empty());
    CHECK(withExtension("a.txt", "bak") == "a.bak" && withExtension("a.b\\c", ".d") == "a.b\\c.d" &&
          withExtension("a.txt", "") == "a");
    CHECK(isAbsolutePath("C:\\a") && isAbsolutePath("\\\\s\\h") && isAbsolutePath("C:/") &&
          !isAbsolutePath("C:a") && !isAbsolutePath("a"));
    CHECK(absolutePath("t\\..\\x") == joinPath(getCurrentDirectory(), "x"));
    CHECK(safeFileName("a/b:c?") == "a_b_c_" && safeFileName("") == "_" &&
          safeFileName("con.txt") == "_con.txt");
    CHECK(safeFileName("...") == "_" && safeFileName("\xC3\xA4 x ") == "\xC3\xA4 x" &&
          safeFileName("COM1") == "_COM1");
}

static void testPlaces() {
    CHECK(fileName(getModuleFileName()) == "library_files.exe" &&
          fileDirectory(getModuleFileName()) == appDirectory());
    for (const char* name : {"documents", "desktop", "appdata", "localappdata", "pictures",
                             "downloads", "temp", "Profile"})
        CHECK(isAbsolutePath(knownFolder(name)));
    CHECK(knownFolder("nowhere").empty() && !lastError().empty());
    const std::string one = tempFile(".txt"), two = tempFile("txt");
    CHECK(fileExists(one) && one != two && fileExtension(two) == ".txt" && fileSize(two) == 0);
    CHECK(deleteFile(one) && deleteFile(two) && diskFree(".").intVal > 0 &&
          diskFree("\\\\nowhere\\x") == -1);
    bool hasC = false;
    for (const Value& drive : driveNames().arrayVal) hasC = hasC || drive == "C:";
    CHECK(hasC);
}

static void testCsvAndIni() {
    const Value rows = listOf({listOf({"a,b", "say \"x\""}), listOf({"two\nlines", 1.5})});
    CHECK(writeCsv("t.csv", rows) &&
          readCsv("t.csv").toString() == "[[a,b, say \"x\"], [two\nlines, 1.5]]");
    CHECK(writeIni("t.ini", "One", "k", 1) &&
          writeIni("t.ini", "Two", "\xC3\xA4", " \xE4\xB8\xAD ") &&
          writeIni("t.ini", "one", "K2", "x=y"));
    CHECK(readIni("t.ini", "ONE", "K", "") == "1" &&
          readIni("t.ini", "two", "\xC3\x84", "") == " \xE4\xB8\xAD ");
    CHECK(readIni("t.ini", "One", "k2", "") == "x=y" &&
          readIni("t.ini", "One", "none", 2.0) == "2" && readIni("no.ini", "a", "b", "c") == "c");
    CHECK(iniSections("t.ini").toString() == "[One, Two]" &&
          iniKeys("t.ini", "one").toString() == "[k, K2]");
    CHECK(writeIni("t.ini", "One", "k", "line\nbreak") &&
          readIni("t.ini", "One", "k", "") == "line break");
    CHECK(!writeIni("t.ini", "One", "", 1) && !writeIni("t.ini", "One", "a=b", 1) &&
          !writeIni("t.ini", "a]b", "k", 1));
    CHECK(writeFile("c.ini", "; note\r\n[s]\r\na=1\r\n\r\n[t]\r\n") &&
          writeIni("c.ini", "s", "b", "\"q\""));
    CHECK_EQUAL(readFile("c.ini"), "; note\r\n[s]\r\na=1\r\nb=\"\"q\"\"\r\n\r\n[t]\r\n");
    CHECK(readIni("c.ini", "s", "b", "") == "\"q\"" && iniKeys("c.ini", "none").arrayVal.empty());
}

static void testFormats() {
    CHECK(sprintf("%d", 0) == "0" && sprintf("%s", "x") == "x" && sprintf("%d %d", 0, 0) == "0 0");
    CHECK(sprintf(Value("%d"), 0) == "0" && sprintf("%d", "7") == "7" &&
          sprintf("%s %s %s", "a", "b", 0) == "a b 0");
    CHECK(sprintf("%s %d, %d to %d", "p", 20, 1, 9) == "p 20, 1 to 9" &&
          fprintf("r.txt", "%d;", 5) == 2);
    CHECK(fprintf("r.txt", "%s=%x", "a", 255) == 4 && readFile("r.txt") == "5;a=ff" &&
          fprintf("no\\r.txt", "%d", 1) == -1);
    CHECK(printf(Value("%d\n"), 1) == 2 && printf("%d %s\n", 1, "x") == 4 &&
          printf("%d%d%d\n", 1, 2, 3) == 4);
    CHECK(consoleWrite("written ") && consoleLine("line"));
}

static void testJsonFiles() {
    CHECK(writeJson("t.json", listOf({1, 2.0, "\xC3\xA4"})) &&
          readJson("t.json").toString() == "[1, 2.000000, \xC3\xA4]");
    CHECK(writeFile("bad.json", "[1,") && readJson("bad.json").isNull() &&
          !writeJson("no\\t.json", 1));
}

static void testLog() {
    CHECK(!logInfo("too early") && !logSection("x") && logPath().empty() &&
          logTail(3).arrayVal.empty() && !logClose());
    CHECK(!logOpen("no\\where.log") && logOpen("my.log") && fileName(logPath()) == "my.log");
    CHECK(logDebug("d") && logInfo("two\nlines") && logWarn(1.0) && logError("e") &&
          logValue("list", listOf({1})));
    CHECK(logLevel("WARN") && !logLevel("loud") && logInfo("skipped") && logSection("Part") &&
          logLevel("off") && logError("x"));
    const Value tail = logTail(100);
    CHECK_EQUAL(tail.arrayVal.size(), 8u);
    CHECK(tail.arrayVal[0].stringVal.substr(23) == " DEBUG d" &&
          tail.arrayVal[1].stringVal.substr(23) == " INFO  two");
    CHECK(tail.arrayVal[2] == "    lines" && tail.arrayVal[4].stringVal.substr(23) == " ERROR e");
    CHECK(tail.arrayVal[5].stringVal.substr(23) == " DEBUG list (list) = [1]" &&
          tail.arrayVal[7] == "== Part ==");
    CHECK(logTail(1).arrayVal.size() == 1 && logTail(-1).arrayVal.empty() && logMaxBytes(100) &&
          logLevel("debug"));
    CHECK(logInfo("new file") && logTail(9).arrayVal.size() == 1 && fileExists("my.log.1") &&
          logMaxBytes(0));
    CHECK(logTime("t") == 0.0 && logTime("t").isFloat() && logToDebugger(true) && logInfo("x") &&
          logClose() && !logInfo("y"));
}

static void testEncryptedFiles() {
    const std::string text = encryptText("h\xC3\xA4llo", "secret");
    CHECK(text != encryptText("h\xC3\xA4llo", "secret") &&
          decryptText(text, "secret") == "h\xC3\xA4llo");
    CHECK(writeFile("p.txt", std::string(1000, 'x')) && encryptFile("p.txt", "p.enc", "pw") &&
          fileSize("p.enc") == 1049);
    CHECK(decryptFile("p.enc", "q.txt", "pw") && sameFile("p.txt", "q.txt") &&
          !decryptFile("p.enc", "r2.txt", "pW"));
    CHECK(!fileExists("r2.txt") && !decryptFile("p.txt", "r2.txt", "pw") &&
          !encryptFile("none", "r2.txt", "pw"));
    CHECK(unprotectText(protectText("mine")) == "mine" && unprotectText("bm8=").isNull() &&
          unprotectText("").isNull());
    const std::string stored = hashPassword("pass");
    CHECK(checkPassword("pass", stored) && !checkPassword("word", stored) &&
          stored != hashPassword("pass"));
}

static void testDigestsOfFiles() {
    // RFC 6234: a million times the letter a.
    CHECK(writeFile("m.txt", std::string(1000000, 'a')));
    CHECK_EQUAL(hashFile("m.txt", "sha256"),
                "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
    CHECK_EQUAL(hashFile("m.txt", "sha1"), "34aa973cd4c4daa4f61eeb2bdbad27316534016f");
    CHECK(hashFile("m.txt", "md5") == md5(readFile("m.txt")) &&
          hashFile("m.txt", "sha512") == sha512(readFile("m.txt")));
    CHECK(writeFile("z.txt", std::string(65536, 'a')) &&
          hashFile("z.txt", "sha256") == sha256(std::string(65536, 'a')));
    CHECK(writeFile("e.txt", "") && hashFile("e.txt", "md5") == md5("") &&
          hashFile("e.txt", "crc").empty());
}

static void testRandom() {
    CHECK(randomHex(8).size() == 16 && randomHex(8) != randomHex(8) && randomHex(0).empty() &&
          randomHex(99999).empty());
    CHECK(randomToken(20).size() == 20 && randomToken(20) != randomToken(20) &&
          randomToken(-1).empty());
    CHECK(regexMatches(uuid(),
                       "[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}"));
    for (int i = 0; i < 100; ++i) CHECK(secureInt(1, 6) >= 1 && secureInt(1, 6) <= 6);
    CHECK(secureInt(5, 5) == 5 && secureInt(5, 4) == 5 &&
          secureInt(-2147483647, 2147483647) != secureInt(-2147483647, 2147483647));
}

// Another program that holds a file open for itself alone.
static void testLockedFile() {
    CHECK(writeFile("l.txt", "locked"));
    HANDLE file =
        CreateFileW(L"l.txt", GENERIC_READ | GENERIC_WRITE, 0, NULL, OPEN_EXISTING, 0, NULL);
    CHECK(readFile("l.txt").empty() && !lastError().empty() && !writeFile("l.txt", "x") &&
          !deleteFile("l.txt"));
    CHECK(!appendFile("l.txt", "x") && !copyFile("l.txt", "l2.txt") &&
          hashFile("l.txt", "md5").empty());
    CloseHandle(file);
    CHECK(readFile("l.txt") == "locked" && deleteFile("l.txt"));
}

int main() {
    testFiles();
    testMissing();
    testFolders();
    testDangerousTrees();
    testLongPaths();
    testPaths();
    testPlaces();
    testCsvAndIni();
    testFormats();
    testJsonFiles();
    testLog();
    testEncryptedFiles();
    testDigestsOfFiles();
    testRandom();
    testLockedFile();
    return finishChecks();
}
