// What a build is at: on a terminal one line that is written anew, elsewhere a line for each step.
//
//     Progress progress(err);
//     progress.show("app.vorla: compiling");
//     progress.finish("app.vorla: built app.exe");
#pragma once

#include "orvane/output.h"

#include <string_view>

namespace Orvane {

class Progress {
public:
    explicit Progress(Output& out_) : out(out_) {}
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress() { clear(); }

    void show(std::string_view step);

    // A line that stays.
    void finish(std::string_view line);

    // Takes the line away, so that other text can be written.
    void clear();

private:
    Output& out;
    bool isShown = false;
};

} // namespace Orvane
