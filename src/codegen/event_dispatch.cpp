#include "codegen/code_generator.h"

#include "codegen/control_kinds.h"
#include "codegen/text_block.h"

namespace Orvane {

namespace {

// What WM_COMMAND must tell besides the control's ID. The scroll codes are looked for here as all
// the others are, although track bars report through another message.
std::string_view conditionOf(std::string_view eventName) {
    if (eventName == "click") return "HIWORD(wParam) == BN_CLICKED";
    if (eventName == "dblclick") return "HIWORD(wParam) == BN_DOUBLECLICKED";
    if (eventName == "change")
        return "HIWORD(wParam) == EN_CHANGE || HIWORD(wParam) == CBN_SELCHANGE";
    if (eventName == "select")
        return "HIWORD(wParam) == LBN_SELCHANGE || HIWORD(wParam) == CBN_SELCHANGE";
    if (eventName == "scroll")
        return "HIWORD(wParam) == TB_THUMBTRACK || HIWORD(wParam) == TB_ENDTRACK";
    return "true";
}

} // namespace

// The handlers by ID, in ascending order; under one ID the controls' own ones first, by event name,
// then the script's in source order. A target is looked up as a key, so that a menu entry is
// reached by NAME_ENTRY; one that names nothing gets an ID that no message carries.
CodeGenerator::DispatchTable CodeGenerator::collectHandlers(const Vorla& window,
                                                            const Script* script) {
    DispatchTable handlers;
    for (const auto& component : window.components)
        for (const auto& [eventName, body] : component->events)
            handlers[getControlId(component->name)].push_back({eventName, &body});
    if (!script) return handlers;
    for (const auto& handler : script->handlers)
        handlers[getControlId(handler->targetName)].push_back({handler->eventName, &handler->body});
    return handlers;
}

//     switch (LOWORD(wParam)) {
//         case 1001: {
//     if (HIWORD(wParam) == BN_CLICKED) {
//         HANDLES
//         BODY
//     }
//             break;
//         }
//         default: break;
//     }
// break;
void CodeGenerator::generateEventDispatcher(const Vorla* window, const Script* script) {
    if (!window) return;
    {
        const IndentScope switchLevel(indentLevel);
        addLine("switch (LOWORD(wParam)) {");
        for (const auto& [id, items] : collectHandlers(*window, script)) {
            addLine("    case " + std::to_string(id) + ": {");
            for (const DispatchItem& item : items) generateHandler(*window, item);
            addLine("        break;");
            addLine("    }");
        }
        addLine("    default: break;");
        addLine("}");
    }
    addLine("break;");
}

// if (CONDITION) {
//     Value NAME = Value::makeHandle((void*)h_NAME);
//     BODY
// }
void CodeGenerator::generateHandler(const Vorla& window, const DispatchItem& item) {
    addLine("if (" + std::string(conditionOf(item.eventName)) + ") {");
    {
        const IndentScope body(indentLevel);
        for (const auto& component : window.components)
            if (hasHandle(*component)) {
                const Observation observation(*this, out, component.get());
                addFilledLine(*this, "Value $name$ = Value::makeHandle((void*)h_$name$);",
                              {{"name", component->name}});
            }
        generateBody(*item.body);
    }
    addLine("}");
}

} // namespace Orvane
