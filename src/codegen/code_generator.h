// A whole program to its two C++ texts.
//
// Made by the driver over the table of library functions and two streams. generate() fixes what
// goes into which stream and in what order (assembly.cpp); the pieces stand in prelude.cpp
// (includes, runtime type, library functions), controls.cpp, window.cpp, event_dispatch.cpp and
// classes.cpp.
//
//     CodeGenerator generator(table, mainStream, importStream, indentLevel);
//     generator.generate(program, mainPath, importPath, debugMode, anyLibraryLoaded);
//     // mainStream now holds main.cpp, importStream import.hpp
#pragma once

#include "codegen/code_generator_core.h"
#include "libraries/replacement_table.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Orvane {

class CodeGenerator : public CodeGeneratorCore {
public:
    CodeGenerator(const ReplacementTable& table, TextStream& mainStream, TextStream& importStream,
                  int& indentLevel);

    // Empties both streams and the tables of the last run, then writes the program. The paths play
    // no part in the text. Throws std::invalid_argument for a colour such as "#12345G". May be
    // called again: everything starts anew but the counters behind control IDs and local names.
    void generate(const AST& program, const std::string& mainPath, const std::string& importPath,
                  bool debugMode, bool anyLibraryLoaded);

    // The line, and in debug mode a "// [DEBUG] " comment of the same text above it.
    void addDebugLine(std::string_view text);

    // ---- Functions (assembly.cpp) ----
    void generateScript(const Script* script);
    static std::string generateFunctionCode(const FunctionEntry& entry);

    // ---- Prelude (prelude.cpp) ----
    static void collectNeededIncludes(const NameSet& calledNames, const NameSet& controlTypes,
                                      std::vector<std::string>& includes);
    static bool needsUtf8Conv(const NameSet& calledNames);

    // ---- Controls (controls.cpp) ----
    void generateComponent(const Component* component);
    void emitCreateWindow(std::string_view name, std::string_view className, std::string_view text,
                          unsigned long style, int x, int y, int width, int height, int id);
    // The ID of a control or menu entry: from 1001 on, the same key always the same number.
    int getControlId(std::string_view key);
    // The radio button that was last declared in the group; empty for an unknown group.
    std::string_view lastRadioOf(std::string_view group) const;
    // "#RRGGBB" as "RGB(r, g, b)"; any other text unchanged.
    static std::string colorToRGB(std::string_view color);
    static void collectControlTypes(const Vorla* window, NameSet& types);

    // ---- Window (window.cpp; the dispatcher in event_dispatch.cpp) ----
    void generateVorla(const Vorla* window, const Script* script);
    void generateEventDispatcher(const Vorla* window, const Script* script);
    // Whether a control, or a direct child of a container, sets a colour.
    static bool hasCustomColors(const Vorla* window);

    // ---- Classes (classes.cpp) ----
    void generateAllClasses(const AST& program);
    void generateClassMethodBody(std::string_view className, const ClassInfo& classInfo,
                                 const ClassMethodInfo& method, const StmtList& body);

private:
    void generateClassMethod(std::string_view className, const ClassInfo& classInfo,
                             const ClassMethod& method);

    // One handler of a control, to be written into the WM_COMMAND case.
    struct DispatchItem {
        std::string_view eventName;
        const StmtList* body; // the tree's
    };
    using DispatchTable = std::map<int, std::vector<DispatchItem>>; // by control ID

    // ---- Assembly (assembly.cpp) ----
    void startRun(const AST& program, bool debugMode_);
    void generatePrototypes(const AST& program);
    void generateFunctions(const AST& program);
    void generateFunction(const FuncDef& function);

    // ---- Prelude (prelude.cpp) ----
    void generatePrelude(const NameSet& calledNames, const NameSet& controlTypes);
    void generateLibrarySection(const NameSet& calledNames);

    // ---- Window (window.cpp) ----
    void generateHandles(const Vorla& window);
    void generateCreateControls(const Vorla& window);
    void generateWindowProcedure(const Vorla& window, const Script* script);
    void generateColourCase(const Vorla& window);
    void generateControlColours(const Component& control);
    void generateEntryPoint(const Vorla& window);

    // ---- Events (event_dispatch.cpp) ----
    DispatchTable collectHandlers(const Vorla& window, const Script* script);
    void generateHandler(const Vorla& window, const DispatchItem& item);

    const ReplacementTable& table;
    bool debugMode = false;

    int controlIdCounter = 1000; // survives generate()
    std::map<std::string, int, std::less<>> controlIds;
    std::map<std::string, std::string, std::less<>>
        radioGroups; // group name -> the last radio button declared in it

    ClassTable classTable;
    NameMap variableClasses;
    NameTable userFunctions;
};

} // namespace Orvane
