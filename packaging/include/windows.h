// Stands in front of the system header of this name and leaves out what no program can use: parts
// whose functions lie in libraries that programs are not linked with (sockets, RPC, OLE, printing,
// multimedia, smart cards, NetBIOS). A third of the compile time of a small program goes with them.
// Whatever user32, gdi32, kernel32, comctl32, comdlg32, shell32 and advapi32 offer stays declared.
#pragma once

// std::min and std::max, and library functions of these names, are never macros.
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include_next <windows.h>

#ifndef RC_INVOKED
#include <cderr.h>
#include <commdlg.h>
#include <dde.h>
#include <ddeml.h>
#include <lzexpand.h>
#include <shellapi.h>
#include <wincrypt.h>
#include <winefs.h>
#endif
