// Stands in front of the system header of this name and gives the item of a tab control a text
// member that keeps what is assigned to it. The generated text assigns the result of a conversion
// to it,
//     tci_pages_0.pszText = utf8_to_acp("General").c_str();
// which is const and gone at the end of the line.
#pragma once
#include_next <commctrl.h>

#ifdef __cplusplus
#include <cstddef>
#include <set>
#include <string>

namespace OrvaneShim {

// A char pointer in the place of TCITEMA::pszText. A const text is copied and the copy lives to the
// end of the program; equal texts share one. A plain char pointer is a buffer for reading an item's
// text and is taken as it is. The const side is a template so that NULL and nullptr choose the
// plain one. Items are made by the thread of the window, so there is no lock.
class TabText {
public:
    TabText(char* buffer_ = nullptr) : buffer(buffer_) {}
    template <typename Char>
    TabText(const Char* text) : buffer(keep(text)) {}
    operator char*() const { return buffer; }

private:
    static char* keep(const char* text) {
        static std::set<std::string> texts;
        if (text == nullptr) return nullptr;
        return const_cast<char*>(texts.insert(text).first->c_str());
    }

    char* buffer;
};

struct TabItem {
    UINT mask = 0;
    DWORD dwState = 0;
    DWORD dwStateMask = 0;
    TabText pszText = nullptr;
    int cchTextMax = 0;
    int iImage = 0;
    LPARAM lParam = 0;
};

// The control reads a TabItem as the structure that it replaces.
static_assert(sizeof(TabItem) == sizeof(TCITEMA), "same size as TCITEMA");
static_assert(offsetof(TabItem, dwState) == offsetof(TCITEMA, dwState), "same layout as TCITEMA");
static_assert(offsetof(TabItem, pszText) == offsetof(TCITEMA, pszText), "same layout as TCITEMA");
static_assert(offsetof(TabItem, cchTextMax) == offsetof(TCITEMA, cchTextMax),
              "same layout as TCITEMA");
static_assert(offsetof(TabItem, iImage) == offsetof(TCITEMA, iImage), "same layout as TCITEMA");
static_assert(offsetof(TabItem, lParam) == offsetof(TCITEMA, lParam), "same layout as TCITEMA");

} // namespace OrvaneShim

#define TCITEMA OrvaneShim::TabItem
#endif
