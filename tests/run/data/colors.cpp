// Colours, and drawing on the canvas of a real window, which is read back point by point.
#include "import.hpp"

#include "../checks.h"
#include "../lists.h"

static void testMaking() {
    CHECK(rgb(51, 102, 204) == "#3366CC" && rgb(-5, 300, "x") == "#00FF00" &&
          rgb(1.5, 0, 0) == "#020000");
    CHECK(hsl(0, 100, 50) == "#FF0000" && hsl(120, 100, 50) == "#00FF00" &&
          hsl(240, 100, 50) == "#0000FF");
    CHECK(hsl(60, 100, 50) == "#FFFF00" && hsl(360, 100, 50) == "#FF0000" &&
          hsl(-120, 100, 50) == "#0000FF");
    CHECK(hsl(0, 0, 50) == "#808080" && hsl(0, 0, 100) == "#FFFFFF" &&
          hsl(120, 100, 25) == "#008000");
    CHECK(hsl(220, 60, 50) == "#3366CC" && hsl(0, 999, 50) == "#FF0000" &&
          hsl("x", 1e300, -5) == "#000000");
    CHECK(hsv(0, 100, 100) == "#FF0000" && hsv(220, 75, 80) == "#3366CC" &&
          hsv(300, 100, 50) == "#800080");
    CHECK(hsv(0, 0, 100) == "#FFFFFF" && hsv(90, 100, 0) == "#000000");
}

static void testTakingApart() {
    CHECK(redOf("#3366CC") == 51 && greenOf("#3366CC") == 102 && blueOf("#3366CC") == 204);
    CHECK(hueOf("#3366CC") == 220 && lightnessOf("#3366CC") == 50 && hueOf("gray") == 0 &&
          hueOf("magenta") == 300);
    CHECK(lightnessOf("white") == 100 && lightnessOf("black") == 0 && hueOf("#FF0001") == 0 &&
          redOf("nonsense") == 0);
    CHECK(colorOf("orange") == "#FFA500" && colorOf("#36c") == "#3366CC" &&
          colorOf("sky") == "#87CEEB");
    CHECK(colorOf(" Red ") == "#FF0000" && colorOf("nonsense") == "#000000" &&
          colorOf(Value()) == "#000000");
    CHECK(isColorText("#36C") && isColorText("NAVY") && !isColorText("#36") &&
          !isColorText("#GGGGGG") && !isColorText(""));
    CHECK(!isColorText("#1234567") && !isColorText(5) && isColorText(Value("color", "#123456")));
    CHECK(colorNumber("#3366CC") == 13395507 && colorFromNumber(13395507) == "#3366CC" &&
          colorFromNumber(-1) == "#000000");
    CHECK(colorFromNumber(1e12) == "#000000" && colorFromNumber(255) == "#FF0000");
}

static void testMixing() {
    CHECK(lighten("#3366CC", 20) == "#5C85D6" && darken("#3366CC", 20) == "#2952A3" &&
          lighten("black", 100) == "#FFFFFF");
    CHECK(mixColors("red", "blue", 50) == "#800080" && mixColors("red", "blue", 0) == "#FF0000" &&
          mixColors("red", "blue", 999) == "#0000FF");
    CHECK(lighten("red", -5) == "#FF0000" && invertColor("#3366CC") == "#CC9933" &&
          invertColor("x") == "#FFFFFF");
    // 0.299 * 51 + 0.587 * 102 + 0.114 * 204 is 98.379.
    CHECK(grayOf("#3366CC") == "#626262" && grayOf("white") == "#FFFFFF");
    CHECK(contrastColor("navy") == "#FFFFFF" && contrastColor("yellow") == "#000000" &&
          contrastColor("#767676") == "#000000");
    CHECK_EQUAL(contrastColor("#757575"), "#FFFFFF");
    CHECK(isColorText(randomColor()) && randomColor().size() == 7);
    CHECK_EQUAL(gradient("black", "white", 3).toString(), "[#000000, #808080, #FFFFFF]");
    CHECK(gradient("red", "blue", 1).toString() == "[#FF0000]" &&
          gradient("red", "blue", 0).arrayVal.empty());
    CHECK(gradient("red", "blue", 1e9).arrayVal.empty());
    CHECK(isColorText(systemColor("window")) && isColorText(systemColor("highlightText")) &&
          systemColor("x").empty());
}

static HWND makeWindow(const char* type, HWND parent, DWORD style) {
    return CreateWindowExA(0, type, "", style, 0, 0, 100, 80, parent, NULL, NULL, NULL);
}

static void testDrawing(const Value& board) {
    CHECK(drawClear(board, "white") && getPixel(board, 5, 5) == "#FFFFFF" &&
          getPixel(board, 500, 5).empty());
    CHECK(drawLine(board, 10, 10, 20, 10, "red") && getPixel(board, 10, 10) == "#FF0000" &&
          getPixel(board, 20, 10) == "#FF0000");
    CHECK(getPixel(board, 21, 10) == "#FFFFFF" && getPixel(board, 10, 11) == "#FFFFFF");
    CHECK(drawLine(board, 10, 40, 90, 40, "blue", 5) && getPixel(board, 50, 38) == "#0000FF" &&
          getPixel(board, 50, 43) == "#FFFFFF");
    CHECK(fillRect(board, 10, 50, 4, 3, "green") && getPixel(board, 10, 50) == "#008000" &&
          getPixel(board, 13, 52) == "#008000");
    CHECK(getPixel(board, 14, 52) == "#FFFFFF" && getPixel(board, 13, 53) == "#FFFFFF" &&
          getPixel(board, 9, 50) == "#FFFFFF");
    CHECK(drawRect(board, 20, 50, 10, 8, "navy") && getPixel(board, 20, 50) == "#000080" &&
          getPixel(board, 29, 57) == "#000080");
    CHECK(getPixel(board, 25, 54) == "#FFFFFF" && getPixel(board, 30, 57) == "#FFFFFF");
    CHECK(fillRect(board, 60, 60, 0, 5, "red") && getPixel(board, 60, 60) == "#FFFFFF");
    CHECK(fillCircle(board, 70, 20, 8, "orange") && getPixel(board, 70, 20) == "#FFA500" &&
          getPixel(board, 70, 13) == "#FFA500");
    CHECK(getPixel(board, 63, 13) == "#FFFFFF");
    CHECK(drawCircle(board, 40, 65, 10, "red") && getPixel(board, 40, 65) == "#FFFFFF" &&
          getPixel(board, 30, 65) == "#FF0000");
    CHECK(drawPolyline(board, listOf({listOf({0, 70}), listOf({5, 70}), listOf({5, 75})}), "red") &&
          getPixel(board, 5, 72) == "#FF0000");
    CHECK(fillPolygon(board, listOf({listOf({80, 50}), listOf({95, 50}), listOf({95, 70})}),
                      "gray") &&
          getPixel(board, 92, 55) == "#808080");
    CHECK(setPixel(board, 1, 1, "#123456") && getPixel(board, 1, 1) == "#123456");
    CHECK(!drawPolyline(board, std::vector<Value>(), "red") && !fillPolygon(board, "x", "red"));
    CHECK(drawLine(board, 1e300, -1e300, "x", Value(), "red") && setPixel(board, -5, 1e9, "red"));
}

static void testTexts(const Value& board) {
    CHECK(drawClear(board, "white") && drawText(board, 0, 0, "W\xC3\xA4", "black") &&
          drawText(board, 0, 20, "W", "red", 20));
    int dark = 0, red = 0;
    for (int x = 0; x < 60; ++x)
        for (int y = 0; y < 60; ++y) {
            const std::string point = getPixel(board, x, y);
            dark += point != "#FFFFFF" && redOf(point) < 128 && y < 20;
            red += redOf(point) > 128 && greenOf(point) < 128 && y >= 20;
        }
    CHECK(dark > 5 && red > 20);
    CHECK(textWidth(board, "") == 0 && textWidth(board, "ab") > textWidth(board, "a"));
}

static void testFiles(const Value& board) {
    CHECK(drawClear(board, "white") && fillRect(board, 2, 3, 4, 5, "red") &&
          saveDrawing(board, "drawing \xC3\xA4.bmp"));
    CHECK(drawClear(board, "black") && drawPicture(board, 10, 10, "drawing \xC3\xA4.bmp"));
    CHECK(getPixel(board, 12, 13) == "#FF0000" && getPixel(board, 11, 13) == "#FFFFFF" &&
          getPixel(board, 9, 9) == "#000000");
    CHECK(!drawPicture(board, 0, 0, "missing.png") && !saveDrawing(board, "no folder\\x.bmp"));
}

static void testWrongKinds(const Value& dead) {
    for (const Value& wrong :
         {Value(), Value(5), Value("board"), Value::makeHandle((void*)1), dead}) {
        CHECK(!drawClear(wrong, "red") && !drawLine(wrong, 0, 0, 1, 1, "red") &&
              !drawLine(wrong, 0, 0, 1, 1, "red", 2));
        CHECK(!drawRect(wrong, 0, 0, 1, 1, "red") && !fillRect(wrong, 0, 0, 1, 1, "red") &&
              !drawCircle(wrong, 0, 0, 1, "red"));
        CHECK(!fillCircle(wrong, 0, 0, 1, "red") && !drawPolyline(wrong, 1, "red") &&
              !fillPolygon(wrong, 1, "red"));
        CHECK(!drawText(wrong, 0, 0, "x", "red") && !drawText(wrong, 0, 0, "x", "red", 9) &&
              textWidth(wrong, "x") == -1);
        CHECK(!setPixel(wrong, 0, 0, "red") && getPixel(wrong, 0, 0).empty() &&
              !drawPicture(wrong, 0, 0, "x"));
        CHECK(!saveDrawing(wrong, "x.bmp") && canvasPoint(wrong).arrayVal.empty());
    }
}

// The picture grows with the canvas, and is freed with it.
static void testSizes() {
    const DWORD before = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    for (int i = 0; i < 50; ++i) {
        HWND window = makeWindow("STATIC", NULL, WS_POPUP);
        const Value board = Value::makeHandle((void*)window);
        CHECK(fillRect(board, 0, 0, 5, 5, "red"));
        SetWindowPos(window, NULL, 0, 0, 300, 200, 0);
        CHECK(getPixel(board, 1, 1) == "#FF0000" && setPixel(board, 290, 190, "blue") &&
              getPixel(board, 290, 190) == "#0000FF");
        DestroyWindow(window);
    }
    CHECK(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS) <= before + 2);
}

int main() {
    testMaking();
    testTakingApart();
    testMixing();
    HWND parent = makeWindow("STATIC", NULL, WS_OVERLAPPEDWINDOW),
         canvas = makeWindow("STATIC", parent, WS_CHILD | SS_OWNERDRAW);
    const Value board = Value::makeHandle((void*)canvas);
    testDrawing(board);
    testTexts(board);
    testFiles(board);
    CHECK_EQUAL(canvasPoint(board).arrayVal.size(), 2u);
    DestroyWindow(parent);
    testWrongKinds(board);
    testSizes();
    return finishChecks();
}
