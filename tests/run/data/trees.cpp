// Trees: places, changes, the walk, the text form and trees that are too deep.
#include "import.hpp"

#include "../checks.h"
#include "../lists.h"

// company with sales (north, south) and service.
static Value company() {
    Value t = treeNew("company");
    treeAdd(t, "", "sales");
    treeAdd(t, "", "service");
    treeAdd(t, "0", "north");
    treeAdd(t, "0", "south");
    return t;
}

static void testPlaces() {
    Value t = company();
    CHECK(treeGet(t, "") == "company" && treeGet(t, "0/1") == "south" &&
          treeGet(t, 1) == "service");
    for (const char* wrong :
         {"2", "0/2", "0/", "/0", "x", "0/x", "-1", "0//1", "?", "99999999999999999999"}) {
        CHECK(!treeHas(t, wrong) && treeGet(t, wrong).isNull() && treeChildCount(t, wrong) == 0);
        CHECK(treeAdd(t, wrong, 1) == "?" && !treeSet(t, wrong, 1) && !treeRemove(t, wrong));
        CHECK(treeSubtree(t, wrong).isNull() && !treeSort(t, wrong) && !treeMove(t, wrong, ""));
    }
    CHECK(treeHas(t, "") && treeHas(t, "0/0") && treeCount(t) == 5 && treeDepth(t) == 3);
    CHECK(treeChildren(t, "0").toString() == "[north, south]" && treeChildCount(t, "") == 2);
    CHECK(treeParent("0/2") == "0" && treeParent("0") == "" && treeParent("") == "?" &&
          treeParent("?") == "?");
}

static void testChanges() {
    Value t = company();
    CHECK(treeInsert(t, "", 0, "board") == "0" && treeGet(t, "1/0") == "north" &&
          treeInsert(t, "", 9, "x") == "?");
    CHECK(treeInsert(t, "", -1, "x") == "?" && treeInsert(t, "", 3, "last") == "3");
    CHECK(treeSet(t, "0", "Board") && treeGet(t, "0") == "Board" && treeRemove(t, "0") &&
          !treeRemove(t, ""));
    CHECK(treeMove(t, "0/1", "1") && treeChildren(t, "1").toString() == "[south]" &&
          treeChildCount(t, "0") == 1);
    CHECK(!treeMove(t, "0", "0/0") && !treeMove(t, "", "0") && !treeMove(t, "0", "0") &&
          treeCount(t) == 6);
    CHECK(treeMove(t, "0", "") && treeChildren(t, "").toString() == "[service, last, sales]");
    CHECK(treeSort(t, "") && treeChildren(t, "").toString() == "[last, sales, service]");
    CHECK(treeGet(t, "1/0") == "north" && treeGet(t, "2/0") == "south");
    const Value branch = treeSubtree(t, "1");
    CHECK(treeCount(branch) == 2 && treeGet(branch, "0") == "north");
}

static void testWalk() {
    const Value t = company();
    CHECK(treeFind(t, "south") == "0/1" && treeFind(t, "company") == "" && treeFind(t, "x") == "?");
    CHECK_EQUAL(treeLeaves(t).toString(), "[north, south, service]");
    const Value walk = treeWalk(t);
    CHECK_EQUAL(walk.arrayVal.size(), 5u);
    CHECK_EQUAL(walk.arrayVal[0].toString(), "{depth: 0, path: , value: company}");
    CHECK_EQUAL(walk.arrayVal[3].toString(), "{depth: 2, path: 0/1, value: south}");
    CHECK_EQUAL(walk.arrayVal[4].toString(), "{depth: 1, path: 1, value: service}");
}

static void testTexts() {
    CHECK_EQUAL(treeText(company()), "company\n  sales\n    north\n    south\n  service\n");
    CHECK(sameValue(treeParse(treeText(company())), company()));
    Value odd = treeNew("a\nb");
    treeAdd(odd, "", "c:\\new");
    treeAdd(odd, "0", "");
    treeAdd(odd, "", "  in");
    treeAdd(odd, "", "\\");
    CHECK_EQUAL(treeText(odd), "a\\nb\n  c:\\\\new\n    \\\n  \\  in\n  \\\\\n");
    CHECK(sameValue(treeParse(treeText(odd)), odd));
    CHECK(treeParse("").isNull() && treeParse("\n  \n").isNull() && treeText(Value()).empty());
    CHECK_EQUAL(treeText(treeParse("    root\n\n child\n      inner\n  other")),
                "root\n  child\n    inner\n    other\n");
}

static void testWrongKinds() {
    Value number = 5, list = listOf({1}), text = "x", null;
    for (const Value& wrong : {number, list, text, null, dictWith({{"children", 5}})}) {
        Value copy = wrong;
        CHECK(treeGet(wrong, "0").isNull() && treeAdd(copy, "0", 1) == "?" &&
              treeWalk(wrong).arrayVal.size() < 2);
        CHECK(treeDepth(wrong) < 2 && treeFind(wrong, "z") == "?" && !treeMove(copy, "0", ""));
    }
    Value broken = treeNew(1);
    broken.mapVal["children"] = listOf({5, "x", treeNew(2)});
    CHECK(treeCount(broken) == 2 && !treeHas(broken, "0") && treeGet(broken, "2") == 2);
}

static void testDepth() {
    Value t = treeNew(0);
    std::string path;
    int refused = 0;
    for (int i = 0; i < 100000; ++i) {
        const std::string added = treeAdd(t, path, i);
        if (added != "?")
            path = added;
        else if (++refused == 100)
            break;
    }
    CHECK(refused == 100 && treeDepth(t) == 200 && treeCount(t) == 200);
    Value other = treeNew("x");
    treeAdd(other, "", "y");
    t = treeSubtree(t, "0");
    CHECK(treeDepth(t) == 199);
    std::string deep;
    for (int i = 0; i < 5000; ++i) deep += std::string(static_cast<size_t>(i), ' ') + "n\n";
    CHECK(treeParse(deep).isNull());
    std::string wide = "root\n";
    for (int i = 0; i < 20000; ++i) wide += " leaf\n";
    CHECK_EQUAL(treeCount(treeParse(wide)), 20001);
}

int main() {
    testPlaces();
    testChanges();
    testWalk();
    testTexts();
    testWrongKinds();
    testDepth();
    return finishChecks();
}
