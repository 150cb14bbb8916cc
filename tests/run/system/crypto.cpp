// Digests, encodings, passwords and encryption against published values.
#include "import.hpp"

#include "checks.h"

static std::string bytes(const std::string& digits) { return orxUnhex(digits).stringVal; }

// RFC 1321, appendix A.5.
static void testMd5() {
    CHECK_EQUAL(md5(""), "d41d8cd98f00b204e9800998ecf8427e");
    CHECK_EQUAL(md5("a"), "0cc175b9c0f1b6a831c399e269772661");
    CHECK_EQUAL(md5("abc"), "900150983cd24fb0d6963f7d28e17f72");
    CHECK_EQUAL(md5("message digest"), "f96b697d7cb7938d525a2f31aaf161d0");
    CHECK_EQUAL(md5("abcdefghijklmnopqrstuvwxyz"), "c3fcd3d76192e4007dfb496cca67e13b");
    CHECK_EQUAL(md5("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789"),
                "d174ab98d277d9f5a5611c2c9f419d9f");
    CHECK_EQUAL(
        md5("12345678901234567890123456789012345678901234567890123456789012345678901234567890"),
        "57edf4a22be3c955ac49da2e2107b67a");
}

// RFC 3174 and RFC 6234.
static void testSha() {
    const std::string two = "abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq";
    const std::string four = "abcdefghbcdefghicdefghijdefghijkefghijklfghijklmghijklmn"
                             "hijklmnoijklmnopjklmnopqklmnopqrlmnopqrsmnopqrstnopqrstu";
    const std::string million(1000000, 'a');
    CHECK_EQUAL(sha1("abc"), "a9993e364706816aba3e25717850c26c9cd0d89d");
    CHECK_EQUAL(sha1(two), "84983e441c3bd26ebaae4aa1f95129e5e54670f1");
    CHECK_EQUAL(sha1(million), "34aa973cd4c4daa4f61eeb2bdbad27316534016f");
    CHECK_EQUAL(sha256(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    CHECK_EQUAL(sha256("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    CHECK_EQUAL(sha256(two), "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
    CHECK_EQUAL(sha256(million),
                "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
    CHECK_EQUAL(sha512("abc"), "ddaf35a193617abacc417349ae20413112e6fa4e89a97ea20a9eeee64b55d39a"
                               "2192992a274fc1a836ba3c23a3feebbd454d4423643ce80e2a9ac94fa54ca49f");
    CHECK_EQUAL(sha512(four), "8e959b75dae313da8cf4f72814fc143f8f7779c6eb9f7fa17299aeadb6889018"
                              "501d289e4900f7e4331b99dec4b5433ac7d329eeb6dd26545e96e55b874be909");
}

// RFC 4231, cases 1, 2 and 6; the check value of CRC-32.
static void testKeyedAndSums() {
    CHECK_EQUAL(hmacSha256(std::string(20, '\x0b'), "Hi There"),
                "b0344c61d8db38535ca8afceaf0bf12b881dc200c9833da726e9376c2e32cff7");
    CHECK_EQUAL(hmacSha256("Jefe", "what do ya want for nothing?"),
                "5bdcc146bf60754e6a042426089575c75a003f089d2739839dec58b964ec3843");
    CHECK_EQUAL(hmacSha256(std::string(131, '\xaa'),
                           "Test Using Larger Than Block-Size Key - Hash Key First"),
                "60e431591ee0b67f0d8a26aacbf5b77f8e0bc6213728c5140546040f0ee37f54");
    CHECK(crc32("123456789") == "cbf43926" && crc32("") == "00000000");
}

// RFC 4648, section 10.
static void testEncodings() {
    const char* pairs[][2] = {{"", ""},
                              {"f", "Zg=="},
                              {"fo", "Zm8="},
                              {"foo", "Zm9v"},
                              {"foob", "Zm9vYg=="},
                              {"fooba", "Zm9vYmE="},
                              {"foobar", "Zm9vYmFy"}};
    for (const auto& pair : pairs) {
        CHECK_EQUAL(base64Encode(pair[0]), std::string(pair[1]));
        CHECK_EQUAL(base64Decode(pair[1]), std::string(pair[0]));
    }
    CHECK(base64Decode("Zm9v\r\nYmFy") == "foobar");
    for (const char* wrong :
         {"Z", "Zg", "Zg=", "Zh==", "Zm9=", "Zg==Zg==", "=", "====", "Zm9v!", "Zm 9v", "Zg=g"}) {
        clearError();
        CHECK(base64Decode(wrong).empty() && !lastError().empty());
    }
    CHECK(hexEncode("foobar") == "666f6f626172" && hexDecode("666F6f626172") == "foobar");
    CHECK(hexDecode("6").empty() && hexDecode("6g").empty() && hexEncode("\xFF") == "ff");
    std::string all;
    for (int i = 0; i < 256; ++i) all += (char)i;
    CHECK(base64Decode(base64Encode(all)) == all && hexDecode(hexEncode(all)) == all);
}

// RFC 7914, section 11 (the first 32 bytes).
static void testPasswordKeys() {
    CHECK_EQUAL(orxHex(orxPasswordKey("passwd", "salt", 1)),
                "55ac046e56e3089fec1691c22544b605f94185216dde0465e68b9d57c20dacbc");
    CHECK_EQUAL(orxHex(orxPasswordKey("Password", "NaCl", 80000)),
                "4ddcd8f60b98be21830cee5ef22701f9641a4418d04c0414aeff08876b34ab56");
    const std::string stored =
        "pbkdf2-sha256$1$73616c74$55ac046e56e3089fec1691c22544b605f94185216dde0465e68b9d57c20dacbc";
    CHECK(checkPassword("passwd", stored) && !checkPassword("passwe", stored) &&
          !checkPassword("", stored));
    for (
        const char* wrong :
        {"", "x", "pbkdf2-sha256$1$73616c74$", "pbkdf2-sha256$0$73$55", "$$$",
         "pbkdf2-sha256$999999999$73616c74$55ac046e56e3089fec1691c22544b605f94185216dde0465e68b9d57c20dacbc",
         "pbkdf2-sha256$1$zz$55ac046e56e3089fec1691c22544b605f94185216dde0465e68b9d57c20dacbc"})
        CHECK(!checkPassword("passwd", wrong));
}

// The cases 13 to 15 of the publication of GCM: keys of 256 bits.
static void testGcm() {
    const std::string zeros(32, '\0'), start(12, '\0');
    CHECK_EQUAL(orxHex(orxGcm(zeros, start, "", false).stringVal),
                "530f8afbc74536b9a963b4f1c4cb738b");
    CHECK_EQUAL(orxHex(orxGcm(zeros, start, std::string(16, '\0'), false).stringVal),
                "cea7403d4d606b6e074ec5d3baf39d18d0d1c8a799996bf0265b98b5d48ab919");
    const std::string key =
        bytes("feffe9928665731c6d6a8f9467308308feffe9928665731c6d6a8f9467308308");
    const std::string iv = bytes("cafebabefacedbaddecaf888");
    const std::string plain =
        bytes("d9313225f88406e5a55909c5aff5269a86a7a9531534f7da2e4c303d8a318a72"
              "1c3c0c95956809532fcf0e2449a6b525b16aedf5aa0de657ba637b391aafd255");
    const std::string sealed = orxGcm(key, iv, plain, false).stringVal;
    CHECK_EQUAL(orxHex(sealed), "522dc1f099567d07f47f37a32a84427d643a8cdcbfe5c0c97598a2bd2555d1aa"
                                "8cb08e48590dbb3da7b08b1056828838c5f61e6393ba7a0abcc9f662898015ad"
                                "b094dac5d93471bdec1a502270e3cc6c");
    CHECK(orxGcm(key, iv, sealed, true).stringVal == plain);
    for (size_t i = 0; i < sealed.size(); i += 7) {
        std::string changed = sealed;
        changed[i] = (char)(changed[i] ^ 1);
        CHECK(orxGcm(key, iv, changed, true).isNull());
    }
    CHECK(orxGcm(key, iv, sealed.substr(0, 15), true).isNull() &&
          orxGcm(key, iv, sealed.substr(1), true).isNull());
}

static void testDecryption() {
    const std::string front(28, 's');
    const std::string key = orxPasswordKey("secret", front.substr(0, 16), 100000);
    const std::string text =
        "orx1:" + base64Encode(front + orxGcm(key, front.substr(16), "hello", false).stringVal);
    CHECK(decryptText(text, "secret") == "hello" && decryptText(text, "Secret").isNull());
    for (size_t size = 0; size < 40; size += 4)
        CHECK(decryptText(text.substr(0, size), "secret").isNull());
    CHECK(decryptText("", "").isNull() && decryptText("orx1:", "x").isNull() &&
          decryptText(5, Value()).isNull());
}

static void testEqualSecrets() {
    CHECK(equalSecret("abc", "abc") && !equalSecret("abc", "abd") && !equalSecret("abc", "ab") &&
          !equalSecret("", "a"));
    CHECK(equalSecret("", "") && equalSecret(1, "1") && !equalSecret("aa", "a"));
}

int main() {
    testMd5();
    testSha();
    testKeyedAndSums();
    testEncodings();
    testPasswordKeys();
    testGcm();
    testDecryption();
    testEqualSecrets();
    return finishChecks();
}
