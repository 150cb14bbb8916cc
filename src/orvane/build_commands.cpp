// The commands check, build and run.

#include "libraries/files.h"
#include "orvane/build.h"
#include "orvane/checked_file.h"
#include "orvane/commands.h"
#include "orvane/start_program.h"
#include "orvane/system.h"

namespace Orvane {

namespace {

// For people only: in the other formats the counts are among the fields.
void showSummary(const CommandRequest& request, const ReportWriter& report, Output& err) {
    const std::string summary = summaryOf(report);
    if (request.format == Format::text && !summary.empty()) err.write(summary + "\n");
}

BuildSettings settingsOf(const CommandRequest& request) {
    return {request.compilerOptions, request.check, request.verbose};
}

} // namespace

int runCheck(const CommandRequest& request, Output& out, Output& err) {
    const auto report = makeReportWriter(request.format, out);
    for (const std::string& name : request.names) {
        const CheckedFile file = checkFile(name, request.compilerOptions);
        report->add(file.source(), file.diagnostics());
    }
    report->finish();
    showSummary(request, *report, err);
    return report->errors() > 0 ? somethingIsWrong : allIsWell;
}

int runBuild(const CommandRequest& request, Output& out, Output& err) {
    const auto report = makeReportWriter(request.format, out);
    Builder builder(*report, err, settingsOf(request));
    bool areAllBuilt = true;
    for (const std::string& name : request.names) areAllBuilt &= builder.build(name);
    report->finish();
    showSummary(request, *report, err);
    return areAllBuilt ? allIsWell : somethingIsWrong;
}

// Standard output is the program's: messages go where progress goes.
int runRun(const CommandRequest& request, Output& err) {
    const std::string& name = request.names.front();
    const auto report = makeReportWriter(Format::text, err);
    if (!Builder(*report, err, settingsOf(request)).build(name)) {
        showSummary(request, *report, err);
        return somethingIsWrong;
    }
    takeInterrupts(); // Ctrl-C is for the program, whose exit status is waited for
    const auto program = startProgram(Builder::executableOf(name), request.programArguments,
                                      RunningProgram::Interrupts::shared, err);
    return program ? static_cast<int>(program->wait()) : somethingIsWrong;
}

} // namespace Orvane
