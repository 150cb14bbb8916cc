#pragma once

#include "program_under_test.h"

// Lines about a window and its controls on standard output. Called by the commands of ui_driver;
// the cases' expected files consist of them.

// A text for one line: line breaks written \n and \r, a backslash doubled.
std::string escaped(const std::string& text);
// The text that is written so.
std::string unescaped(const std::string& text);

bool isListBox(HWND window);

// "window NotesClass 800x600 style=14cf0000 title=Notes", the frame included in the size.
void printFrame(HWND window);
// "1001 Button 20,100 100x30 style=50000000 text=Greet", the place counted from the upper left
// corner of the window's inner area.
void printControl(HWND window, HWND child);
// "1004 selected=0 items: [one] [two]" of a list box, combo box or tab control.
void printItems(const ProgramUnderTest& program, HWND target);
// "1005 range: 0 to 100, position: 30" of a slider or progress bar.
void printRange(HWND target);
