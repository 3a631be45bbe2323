// LAYER: makes layers, sets the current one, and what is shown of them.
#include <algorithm>
#include <functional>

#include "host/ed/frontend.h"
#include "host/ed/host_command_tools.h"
#include "host/ed/prompting.h"
#include "host/ed/sysvars.h"
#include "host/os/text.h"
#include "host/os/wildcard.h"

namespace host {
namespace {

std::wstring askName(const wchar_t* prompt) {
    std::wstring text;
    acedGetString(1, prompt, text);
    return std::wstring(trimmed(std::wstring_view(text)));
}

// The names of a list parted by commas.
std::vector<std::wstring> namesIn(const std::wstring& list) {
    std::vector<std::wstring> names;
    for (size_t from = 0; from <= list.size();) {
        const size_t comma = std::min(list.find(L',', from), list.size());
        const auto name = trimmed(std::wstring_view(list).substr(from, comma - from));
        if (!name.empty()) names.emplace_back(name);
        from = comma + 1;
    }
    return names;
}

// Makes the layer unless it is there; false when it can't be.
bool ensureLayer(const std::wstring& name) {
    if (!drawing().find(AcDbLayerTable::desc(), name).isNull()) return true;
    AcDbObjectPointer<AcDbLayerTable> table(drawing().layerTableId(), AcDb::kForWrite);
    auto layer = std::make_unique<AcDbLayerTableRecord>();
    if (!table || layer->setName(name.c_str()) != Acad::eOk || table->add(layer.get()) != Acad::eOk) {
        printLine(L"\n\"" + name + L"\" is no name for a layer: <>/\\\":;?*|=` can't stand in it.");
        return false;
    }
    layer->setLinetypeObjectId(drawing().continuousLinetype());
    layer.release()->close();
    return true;
}

void setCurrent(const std::wstring& name) {
    std::wstring why;
    if (!setSystemVariableText(*findSystemVariable(L"CLAYER"), name, why))
        printLine(L"\nThe layer can't be made current: " + why + L".");
}

// Changes every layer whose name the patterns match; names those that none matches.
void forLayers(const std::wstring& patterns, const std::function<void(AcDbLayerTableRecord&)>& change) {
    AcDbObjectPointer<AcDbLayerTable> table(drawing().layerTableId(), AcDb::kForRead);
    if (!table) return;
    for (const std::wstring& pattern : namesIn(patterns)) {
        int matched = 0;
        for (const AcDbObjectId id : table->records()) {
            AcDbObjectPointer<AcDbLayerTableRecord> layer(id, AcDb::kForWrite);
            if (!layer || !wildcardMatch(layer->name(), pattern)) continue;
            ++matched;
            change(*layer);
        }
        if (matched == 0) printLine(L"\nNo layers match \"" + pattern + L"\".");
    }
}

std::wstring currentLayer() { return systemVariableText(*findSystemVariable(L"CLAYER")); }

void colorLayers() {
    std::wstring text;
    if (acedGetString(0, L"\nEnter color name or number (1-255): ", text) != RTNORM || text.empty()) return;
    const int index = colorIndexOf(text);
    if (index < 1 || index > 255)
        return printLine(L"\nA color is a number from 1 to 255, or red, yellow, green, cyan, blue, magenta, "
                         L"white.");
    const std::wstring names = askName(
        (L"\nEnter name list of layer(s) for color " + text + L" <" + currentLayer() + L">: ").c_str());
    AcCmColor color;
    color.setColorIndex(Adesk::UInt16(index));
    forLayers(names.empty() ? currentLayer() : names,
              [&](AcDbLayerTableRecord& layer) { layer.setColor(color); });
}

void setLinetype() {
    const std::wstring name = askName(L"\nEnter loaded linetype name <Continuous>: ");
    const AcDbObjectId id =
        drawing().find(AcDbLinetypeTable::desc(), name.empty() ? L"Continuous" : name.c_str());
    if (id.isNull()) return printLine(L"\nThe drawing has no linetype \"" + name + L"\".");
    const std::wstring names =
        askName((L"\nEnter name list of layer(s) for linetype <" + currentLayer() + L">: ").c_str());
    forLayers(names.empty() ? currentLayer() : names,
              [&](AcDbLayerTableRecord& layer) { layer.setLinetypeObjectId(id); });
}

void listLayers() {
    std::wstring pattern = askName(L"\nEnter layer name(s) to list <*>: ");
    if (pattern.empty()) pattern = L"*";
    AcDbObjectPointer<AcDbLayerTable> table(drawing().layerTableId(), AcDb::kForRead);
    if (!table) return;
    acutPrintf(L"\n%-24s %-10s %-8s %s", L"Layer name", L"State", L"Color", L"Linetype");
    for (const AcDbObjectId id : table->records()) {
        AcDbObjectPointer<AcDbLayerTableRecord> layer(id, AcDb::kForRead);
        if (!layer || !wildcardMatch(layer->name(), pattern)) continue;
        AcDbObjectPointer<AcDbLinetypeTableRecord> linetype(layer->linetypeObjectId(), AcDb::kForRead);
        std::wstring state = layer->isOff() ? L"off" : L"on";
        if (layer->isFrozen()) state += L" frozen";
        if (layer->isLocked()) state += L" locked";
        acutPrintf(L"\n%-24s %-10s %-8d %s", layer->name().c_str(), state.c_str(),
                   int(layer->color().colorIndex()), linetype ? linetype->name().c_str() : L"");
    }
    acutPrintf(L"\nCurrent layer: \"%s\"", currentLayer().c_str());
}

struct Switch {
    const wchar_t* keyword;
    const wchar_t* prompt;
    void (*change)(AcDbLayerTableRecord&);
};
constexpr Switch kSwitches[] = {
    {L"ON", L"\nEnter name list of layer(s) to turn on: ",
     [](AcDbLayerTableRecord& l) { l.setIsOff(false); }},
    {L"OFF", L"\nEnter name list of layer(s) to turn off: ",
     [](AcDbLayerTableRecord& l) { l.setIsOff(true); }},
    {L"Freeze", L"\nEnter name list of layer(s) to freeze: ",
     [](AcDbLayerTableRecord& l) { l.setIsFrozen(true); }},
    {L"Thaw", L"\nEnter name list of layer(s) to thaw: ",
     [](AcDbLayerTableRecord& l) { l.setIsFrozen(false); }},
    {L"LOck", L"\nEnter name list of layer(s) to lock: ",
     [](AcDbLayerTableRecord& l) { l.setIsLocked(true); }},
    {L"Unlock", L"\nEnter name list of layer(s) to unlock: ",
     [](AcDbLayerTableRecord& l) { l.setIsLocked(false); }},
};

void switchLayers(const Switch& chosen) {
    const std::wstring names = askName(chosen.prompt);
    const AcDbObjectId current = drawing().clayer();
    forLayers(names, [&](AcDbLayerTableRecord& layer) {
        if (layer.objectId() == current && std::wstring_view(chosen.keyword) == L"Freeze")
            return printLine(L"\nCannot freeze the current layer \"" + layer.name() + L"\".");
        chosen.change(layer);
    });
}

void apply(const std::wstring& choice) {
    if (choice == L"?") return listLayers();
    if (choice == L"Color") return colorLayers();
    if (choice == L"LType") return setLinetype();
    for (const Switch& row : kSwitches)
        if (choice == row.keyword) return switchLayers(row);
    if (choice == L"New") {
        for (const std::wstring& name : namesIn(askName(L"\nEnter name list for new layer(s): ")))
            ensureLayer(name);
        return;
    }
    const std::wstring prompt =
        (choice == L"Make" ? L"\nEnter name for new layer (becomes the current layer) <"
                           : L"\nEnter layer name to make current <") +
        currentLayer() + L">: ";
    const std::wstring name = askName(prompt.c_str());
    if (!name.empty() && (choice == L"Set" || ensureLayer(name))) setCurrent(name);
}

} // namespace

void layerCommand() {
    printLine(L"\nCurrent layer: \"" + currentLayer() + L"\"");
    for (;;) {
        acedInitGet(0, L"? Make Set New ON OFF Color LType Freeze Thaw LOck Unlock "
                       L"_? Make Set New ON OFF Color LType Freeze Thaw LOck Unlock");
        std::wstring choice;
        if (acedGetKword(L"\nEnter an option [?/Make/Set/New/ON/OFF/Color/LType/Freeze/Thaw/LOck/Unlock]: ",
                         choice) != RTNORM)
            break;
        apply(choice);
    }
    frontEnd().redraw();
}

} // namespace host
