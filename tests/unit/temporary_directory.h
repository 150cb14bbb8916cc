// A fresh directory for one test, removed with everything in it.
//
//     TemporaryDirectory directory;
//     directory.write("orlib/ui.orlib", "int one() { return 1; }");
//     WorkingDirectory inside(directory.path());
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

class TemporaryDirectory {
public:
    TemporaryDirectory() {
        std::string pattern =
            (std::filesystem::canonical(std::filesystem::temp_directory_path()) / "orvane-XXXXXX")
                .string();
        if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary directory");
        root = pattern;
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
    ~TemporaryDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(root, ignored);
    }

    const std::filesystem::path& path() const { return root; }
    std::string text(std::string_view name) const { return (root / name).string(); }

    // Makes the directories on the way as well.
    void write(std::string_view name, std::string_view content) const {
        std::filesystem::create_directories((root / name).parent_path());
        std::ofstream file(root / name, std::ios::binary);
        file << content;
        if (!file.flush()) throw std::runtime_error("cannot write " + text(name));
    }

    std::string read(std::string_view name) const {
        std::ifstream file(root / name, std::ios::binary);
        if (!file) throw std::runtime_error("cannot read " + text(name));
        return std::string(std::istreambuf_iterator<char>(file), {});
    }

    bool has(std::string_view name) const { return std::filesystem::exists(root / name); }

private:
    std::filesystem::path root;
};

// The working directory of the process for the lifetime of a scope.
class WorkingDirectory {
public:
    explicit WorkingDirectory(const std::filesystem::path& path)
        : before(std::filesystem::current_path()) {
        std::filesystem::current_path(path);
    }
    WorkingDirectory(const WorkingDirectory&) = delete;
    WorkingDirectory& operator=(const WorkingDirectory&) = delete;
    ~WorkingDirectory() { std::filesystem::current_path(before); }

private:
    std::filesystem::path before;
};
