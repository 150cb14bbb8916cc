#include "check/window_check.h"

#include <gtest/gtest.h>

using namespace Orvane;

namespace {

// One line per diagnostic: "id: the text of its place", in the order of the source.
std::string complaints(const std::string& text) {
    const ParsedSource source("app.vorla", text);
    LibraryFunctions libraries(ORVANE_SOURCE_ROOT "/orlib");
    libraries.load(source.tree(), {});
    std::vector<Diagnostic> found;
    checkWindow(source, libraries, found);
    std::string lines;
    for (const Diagnostic& diagnostic : found)
        lines += std::string(messageOf(diagnostic.id).id) + ": " +
                 std::string(source.source().part(diagnostic.range)) + "\n";
    return lines;
}

// The text of the first diagnostic, and its hint.
std::string firstText(const std::string& text) {
    const ParsedSource source("app.vorla", text);
    const LibraryFunctions libraries;
    std::vector<Diagnostic> found;
    checkWindow(source, libraries, found);
    return found.empty() ? "" : found[0].text + " | " + found[0].hint;
}

std::string inWindow(const std::string& body) {
    return "vorla Main { width = 400; height = 300; " + body + " }";
}

} // namespace

// ---- Properties ----

TEST(WindowCheck, knowsThePropertiesOfEveryKind) {
    EXPECT_EQ(complaints(inWindow("button ok { widht = 5 }")), "unknown-property: widht\n");
    EXPECT_EQ(complaints(inWindow("button ok { items = {\"a\"} }")), "unknown-property: items\n");
    EXPECT_EQ(complaints(inWindow("combobox ok { items = {\"a\"} }")), "");
    EXPECT_EQ(complaints("vorla Main { text = \"Main\" }"), "unknown-property: text\n");
}

TEST(WindowCheck, namesThePropertyThatIsMeant) {
    EXPECT_EQ(firstText(inWindow("button ok { widht = 5 }")),
              "a button has no property 'widht' | Write 'width' if you mean that.");
    EXPECT_EQ(firstText(inWindow("entry who { left = 5 }")),
              "a control of the kind 'entry' has no property 'left' | Write 'x' if you mean that.");
    EXPECT_EQ(firstText("vorla Main { caption = \"Main\" }"),
              "a window has no property 'caption' | Write 'title' if you mean that.");
    EXPECT_EQ(firstText(inWindow("button ok { enabled = true }")),
              "a button has no property 'enabled' | Unknown properties are ignored.");
}

TEST(WindowCheck, wantsLiteralsInProperties) {
    EXPECT_EQ(complaints(inWindow("button ok { x = -5 }")), "computed-property: -5\n");
    EXPECT_EQ(complaints(inWindow("listbox list { items = {\"a\", b} }")),
              "computed-property: {\"a\", b}\n");
    EXPECT_EQ(complaints(inWindow("listbox list { items = [\"a\", \"b\", \"c\"] }")), "");
    EXPECT_EQ(complaints(inWindow("listbox list { items = [1..5] }")),
              "computed-property: [1..5]\n");
}

TEST(WindowCheck, wantsTheRightKindOfLiteral) {
    EXPECT_EQ(firstText(inWindow("button ok { x = \"5\" }")),
              "'x' takes an integer, not a text | Anything else is read as 0.");
    EXPECT_EQ(firstText(inWindow("button ok { text = 5 }")),
              "'text' takes a text, not an integer | Anything else is read as an empty text.");
    EXPECT_EQ(complaints(inWindow("text t { color = #FF0000; background = \"#00FF00\" }")), "");
}

TEST(WindowCheck, seesPropertiesThatAreGivenTwice) {
    EXPECT_EQ(complaints(inWindow("button ok { x = 5; y = 5; x = 6 }")), "repeated-property: x\n");
}

TEST(WindowCheck, seesPropertiesWithoutEffect) {
    EXPECT_EQ(complaints(inWindow("checkbox c { checked = true }")),
              "useless-property: checked = true\n");
    EXPECT_EQ(complaints(inWindow("checkbox c { checked = false }")), "");
    EXPECT_EQ(complaints(inWindow("button ok { color = #FF0000 }")),
              "useless-property: color = #FF0000\n");
    EXPECT_EQ(complaints(inWindow("timer t { x = 5 }")), "useless-property: x = 5\n");
}

TEST(WindowCheck, looksAtTheValuesOfSlidersAndBars) {
    EXPECT_EQ(complaints(inWindow("slider s { min = 10; max = 0 }")), "slider-range: s\n");
    EXPECT_EQ(complaints(inWindow("slider s { min = 0; max = 10; value = 11 }")),
              "value-range: 11\n");
    EXPECT_EQ(complaints(inWindow("slider s { min = 0; max = 10; value = 10 }")), "");
    EXPECT_EQ(complaints(inWindow("progress p { value = 101 }")), "value-range: 101\n");
}

TEST(WindowCheck, wantsABitmapInAPicture) {
    EXPECT_EQ(complaints(inWindow("picture p { src = \"a.png\" }")), "picture-file: p\n");
    EXPECT_EQ(complaints(inWindow("picture p { src = \"A.BMP\" }")), "");
    EXPECT_EQ(complaints(inWindow("picture p { }")), "picture-file: p\n");
    EXPECT_EQ(
        complaints(
            "import win32\n" +
            inWindow("picture p { } button b { x = 200 on click { setPicture(p, \"a.png\"); } }")),
        "");
}

TEST(WindowCheck, seesColoursThatBecomeCode) {
    EXPECT_EQ(complaints(inWindow("text t { color = \"RGB(1, 2, 3)\" }")),
              "unusual-colour: \"RGB(1, 2, 3)\"\n");
}

// ---- Controls ----

TEST(WindowCheck, knowsTheKindsOfControl) {
    EXPECT_EQ(firstText(inWindow("label hello { }")),
              "no kind of control is called 'label', and "
              "'hello' is left out | Write 'text' if you mean that.");
    EXPECT_EQ(complaints(inWindow("Button ok { nonsense = 1 }")), "unknown-kind: Button\n");
}

TEST(WindowCheck, seesWindowsAndMenusThatAreReplaced) {
    EXPECT_EQ(complaints("vorla A { } vorla B { }"), "replaced-window: A\n");
    EXPECT_EQ(complaints(inWindow("menu a { items = {\"x\"} } menu b { items = {\"y\"} }")),
              "replaced-menu: a\n");
    EXPECT_EQ(complaints(inWindow("menu a { } menu a { }")), "duplicate-control: a\n");
    EXPECT_EQ(complaints(inWindow("timer a { } timer a { }")), "shared-name: a\n");
}

TEST(WindowCheck, seesMenuEntriesThatNoHandlerReaches) {
    EXPECT_EQ(complaints(inWindow("menu bar { items = {\"Save as\", \"|\", \"Quit\"} }")),
              "menu-entry-name: bar\n");
}

// ---- Layout ----

TEST(WindowCheck, seesControlsOnOneAnother) {
    EXPECT_EQ(complaints(inWindow("button a { x = 10; y = 10 } button b { x = 60; y = 20 }")),
              "overlapping-controls: b\n");
    EXPECT_EQ(complaints(inWindow("button a { x = 10; y = 10 } button b { x = 110; y = 10 }")), "");
    EXPECT_EQ(complaints(inWindow("button a { x = 10; y = 10 } button b { x = 10; y = 40 }")), "");
}

TEST(WindowCheck, seesOverlapsInEveryOrderOfDeclaration) {
    const std::string low = "button low { x = 0; y = 20; width = 300 } ";
    const std::string left = "button left { x = 0; y = 0 } ";
    const std::string right = "button right { x = 200; y = 0 } ";
    EXPECT_EQ(complaints(inWindow(low + right + left)), "overlapping-controls: low\n");
    EXPECT_EQ(complaints(inWindow(left + right + low)), "overlapping-controls: low\n");
}

TEST(WindowCheck, letsControlsLieInGroupsAndTabs) {
    EXPECT_EQ(
        complaints(inWindow("group g { width = 200; height = 200 } button b { x = 10; y = 10 }")),
        "");
    EXPECT_EQ(
        complaints(inWindow("button b { x = 10; y = 10 } tab t { width = 200; height = 200 }")),
        "");
}

TEST(WindowCheck, letsComboBoxesOpenOverOtherControls) {
    EXPECT_EQ(complaints(inWindow("combobox c { height = 200 } button b { y = 40 }")), "");
    EXPECT_EQ(complaints(inWindow("combobox c { height = 200 } button b { y = 20 }")),
              "overlapping-controls: b\n");
}

TEST(WindowCheck, letsThePlaceOfMovedAndHiddenControlsAlone) {
    EXPECT_EQ(
        complaints("import win32\n" + inWindow("button a { on click { hide(b); } } button b { }")),
        "");
    EXPECT_EQ(
        complaints("import win32\n" +
                   inWindow("button a { on click { startTimer(b, 5); } } button b { x = 3000 }")),
        "");
}

TEST(WindowCheck, seesControlsOutsideOfTheWindow) {
    EXPECT_EQ(complaints(inWindow("button a { x = 384 }")), "outside-window: a\n");
    EXPECT_EQ(complaints(inWindow("button a { x = 280 }")), "");
    EXPECT_EQ(complaints(inWindow("button a { x = 310 }")), "outside-window: a\n");
    EXPECT_EQ(complaints("import win32\n" +
                         inWindow("button a { x = 500 on click { maximizeWindow(); } }")),
              "");
}

TEST(WindowCheck, seesWhatHasNoSize) {
    EXPECT_EQ(complaints(inWindow("button a { width = 0 }")), "zero-size: a\n");
    EXPECT_EQ(complaints(inWindow("panel a { width = 0; height = 0 }")), "");
    EXPECT_EQ(complaints("vorla Main { width = 0; height = 0 }"), "window-size: Main\n");
}

// ---- Events ----

TEST(WindowCheck, knowsTheEventsOfEveryKind) {
    EXPECT_EQ(complaints(inWindow("button a { on change { } }")), "silent-event: change\n");
    EXPECT_EQ(complaints(inWindow("entry a { on change { } }")), "");
    EXPECT_EQ(complaints(inWindow("text a { on click { } }")), "silent-event: click\n");
    EXPECT_EQ(complaints(inWindow("listbox a { on dblclick { } }")),
              "misleading-event: dblclick\n");
    EXPECT_EQ(complaints(inWindow("menu a { on click { } }")), "silent-event: click\n");
}

TEST(WindowCheck, knowsTheEventsThatTheLibraryAdds) {
    const std::string slider = "slider a { on scroll { alert(1); } }";
    const std::string start = "panel p { y = 100 on start { enableEvents(); } }";
    EXPECT_EQ(complaints(inWindow(slider)), "silent-event: scroll\n");
    EXPECT_EQ(complaints("import win32\n" + inWindow(slider + start)), "");
    EXPECT_EQ(complaints(inWindow("panel p { on start { alert(1); } }")), "silent-event: start\n");
}

TEST(WindowCheck, knowsHandlersThatTheLibraryRuns) {
    EXPECT_EQ(complaints(
                  "import win32\n" +
                  inWindow("panel p { on click { } } button b { on click { startTimer(p, 5); } }")),
              "");
    EXPECT_EQ(complaints(inWindow("panel p { on click { } } button b { on click { own(p); } }")),
              "");
    EXPECT_EQ(complaints("import win32\n" +
                         inWindow("panel p { on click { } } button b { on click { redraw(p); } }")),
              "silent-event: click\n");
}

TEST(WindowCheck, seesEventsThatDoNotExist) {
    EXPECT_EQ(firstText(inWindow("button a { on clik { } }")),
              "no event is called 'clik', so this handler runs with every notification of the "
              "button | Write 'click' if you mean that.");
    EXPECT_EQ(complaints(inWindow("button a { on onclick { } }")), "unknown-event: onclick\n");
}

TEST(WindowCheck, seesHandlersThatAreReplaced) {
    EXPECT_EQ(complaints(inWindow("button a { on click { } on click { } }")),
              "repeated-event: click\n");
}

TEST(WindowCheck, seesHandlersOfNothing) {
    EXPECT_EQ(complaints(inWindow("button ok { }") + " Main.script { on okay.click { } }"),
              "unknown-target: okay\n");
    EXPECT_EQ(complaints(inWindow("menu m { items = {\"Open\"} }") +
                         " Main.script { m_Open.click { } on m_Save.click { } }"),
              "unknown-target: m_Save\n");
    EXPECT_EQ(firstText("Main.script { on ok.click { } }"),
              "no control is called 'ok', so this handler never runs | The program has no window.");
}

TEST(WindowCheck, saysNothingAboutSourcesWithoutAWindow) {
    EXPECT_EQ(complaints("int twice(int n) { return n * 2; }"), "");
}
