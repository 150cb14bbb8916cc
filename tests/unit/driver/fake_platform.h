// A system that only pretends: the compiler is installed where a test says, and what it starts is
// recorded instead.
#pragma once

#include "driver/platform.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

class FakePlatform final : public Orvane::Platform {
public:
    explicit FakePlatform(std::string executable_) : executable(std::move(executable_)) {}

    std::string executablePath() const override { return executable; }
    std::optional<unsigned long> run(const std::string& commandLine) override {
        commands.push_back(commandLine);
        if (onRun) onRun();
        return exitCode;
    }

    std::string executable;
    std::optional<unsigned long> exitCode = 0; // none: the program does not start
    std::function<void()> onRun;
    std::vector<std::string> commands;
};
