// The expressions of sensible programs.
//
// Each function writes an expression of the C++ type that its name tells; `depth` counts what may
// still be nested, and at 0 only names and literals are written. A name is used only where it is
// known, and called with the right number and types of arguments.
#pragma once

#include "support/program_generator.h"

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Orvane {

// The C++ types of expressions; of dynamic values also what is known about them.
enum class Kind { integer, floating, text, truth, dynamic, list, object, control };

struct Variable {
    std::string name;
    Kind kind;
    std::string className{};    // of an object
    std::size_t length = 0;     // of a list
    bool mayBeAssigned = false; // a loop counter may not
};

// A function of the program or of a library, or a method.
struct Function {
    std::string name;
    std::optional<Kind> result; // none: void
    std::vector<Kind> parameters;
    std::string_view library{}; // that must be imported
};

struct Class {
    std::string name;
    std::vector<std::string> fields;
    std::vector<Function> methods;
};

// The base of SensibleProgram, which declares what is known and writes everything else.
class SensibleExpressions {
protected:
    explicit SensibleExpressions(Choices& choices_) : choices(choices_) {}

    static constexpr int deepestExpression = 3;

    // ---- Text ----
    void line(const std::string& content);
    void open(const std::string& head);
    void close(const std::string& tail = "");
    std::string newName();
    std::string sentence();
    std::string number(std::size_t bound);

    // ---- What is known ----
    bool isImported(std::string_view library) const;
    bool mayCall(const Function& function) const;
    const Variable* find(Kind kind) const;
    const Variable* anyVariable(Kind kind);
    const Function* anyFunction(std::optional<Kind> result);
    const Class* findClass(const std::string& name) const;

    // ---- Expressions ----
    // As an operand of any operator.
    static std::string operand(const std::string& expression);
    std::string call(const Function& function, int depth);
    std::string arguments(const Function& function, int depth);
    std::string variableOr(Kind kind, const std::string& otherwise);
    std::string callOr(Kind kind, int depth, const std::string& otherwise);
    std::string of(Kind kind, int depth);
    std::string integer(int depth);
    std::string floating(int depth);
    std::string textual(int depth);
    std::string truth(int depth);
    std::string comparison();
    std::string condition(int depth);
    std::string test(int depth);
    // Whatever is no list.
    std::string scalar(int depth);
    // A dynamic value. Leaves that are none become one by being the branches of a condition.
    std::string dynamic(int depth);
    std::string listElement(const std::string& otherwise);
    std::string objectMember(int depth, const std::string& otherwise);
    std::string comprehension(int depth);
    std::string listOf(std::size_t length, int depth);
    std::string objectOf(const Class& type, int depth);
    // What a dynamic variable or parameter takes.
    std::string anything(int depth);

    Choices& choices;
    std::string text;
    std::size_t indent = 0;
    std::size_t names = 0;
    std::vector<std::string_view> libraries;
    std::vector<Class> classes;
    std::vector<Function> ownFunctions; // those that may be called
    std::deque<Variable> variables;     // in reach, innermost last; places stay
    bool inMethod = false;              // where library functions are not sure to be found
};

} // namespace Orvane
