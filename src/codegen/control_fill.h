// The lines that follow the creation of a control, one function per kind.
//
// The table in control_kinds.cpp names them; generateComponent calls them through it.
//
//     fillSlider(generator, "volume", settings);   // the range and the position of h_volume
#pragma once

#include "codegen/control_settings.h"

#include <string_view>

namespace Orvane {

class CodeGenerator;

void fillListbox(CodeGenerator& generator, std::string_view name, const ControlSettings& settings);
void fillCombobox(CodeGenerator& generator, std::string_view name, const ControlSettings& settings);
void fillSlider(CodeGenerator& generator, std::string_view name, const ControlSettings& settings);
void fillProgress(CodeGenerator& generator, std::string_view name, const ControlSettings& settings);
void fillPicture(CodeGenerator& generator, std::string_view name, const ControlSettings& settings);
void fillMenu(CodeGenerator& generator, std::string_view name, const ControlSettings& settings);
void fillStatus(CodeGenerator& generator, std::string_view name, const ControlSettings& settings);
void fillCanvas(CodeGenerator& generator, std::string_view name, const ControlSettings& settings);
void fillTimer(CodeGenerator& generator, std::string_view name, const ControlSettings& settings);
void fillTab(CodeGenerator& generator, std::string_view name, const ControlSettings& settings);

} // namespace Orvane
