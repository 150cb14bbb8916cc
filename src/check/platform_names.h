// The names that a generated program has from C++ and from Windows.
//
//     reservedWord("delete");        // ReservedWord::cpp
//     mayBePlatformName("sqrt");     // true
#pragma once

#include "check/value_types.h"

#include <span>
#include <string_view>

namespace Orvane {

enum class ReservedWord { none, cpp, windows };

// Whether the word cannot be a name in C++: a word of C++ itself, or a macro of the Windows headers
// that stands for something else than a name.
ReservedWord reservedWord(std::string_view name);

// Whether C++ may take the word before brackets as it takes a function: not(x), sizeof(x), float(n).
bool isCalledLikeFunction(std::string_view word);

// Whether the headers of generated programs declare or define the name. Some other names count as
// well, so that only "no" is certain.
bool mayBePlatformName(std::string_view name);

// Whether it is a function of C, C++ or Windows of which no overload takes a dynamic value or a
// string.
bool isPlainPlatformFunction(std::string_view name);

// Whether it is a macro with arguments, which takes the place of every function of the name.
bool isMacroFunction(std::string_view name);

// Whether it is a function of C or Windows without parameters, beside which there can be no other
// one.
bool isBareFunction(std::string_view name);

// Whether C or Windows have a function of this name and these parameters.
bool isPlatformSignature(std::string_view name, std::span<const ValueType> parameters);

// Whether it is a function of C or Windows that takes a number and gives nothing. A call with a
// number means that one, if the function of the program takes a dynamic value.
bool isSilentFunction(std::string_view name);

// Whether it is a function of the C++ library that takes at least one argument.
bool isTemplateFunction(std::string_view name);

// Whether the C++ library has something under the name that makes a call of a function of the same
// name ambiguous.
bool isCppType(std::string_view name);

} // namespace Orvane
