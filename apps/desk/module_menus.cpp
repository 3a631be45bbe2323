// Beside a module lie its menu file in English and in Chinese. The English one tells which items there are,
// the Chinese one has the source texts, which the language service knows in every language.
#include "apps/desk/module_menus.h"

#include <filesystem>
#include <map>

#include "apps/desk/qt_text.h"
#include "apps/desk/texts.h"
#include "host/ed/application.h"
#include "host/ed/commands.h"
#include "host/ed/host_commands.h"
#include "host/os/files.h"
#include "host/os/text.h"

namespace desk {
namespace {

// Commands that have a tool button, by their global names.
constexpr const char* kButtons[] = {"SCVN_PLYH",         "SCVN_PLYH2",           "SCVN_SPL2ARC",
                                    "SCVN_spline2pline", "SCVN_pline2spline",    "SCVN_PLReverse",
                                    "SCVN_PLDevide",     "SCVN_PLINTERSECT",     "SCVN_DevideLine3",
                                    "SCVN_PLBLENDS",     "SCVN_ArrayAlignCurve", "SCVN_VerticalInsert",
                                    "SCVN_mcopy",        "SCVN_VECTORIZE"};

using Sources = std::map<QString, const MenuItem*>; // by their marks

void gather(const std::vector<MenuItem>& items, Sources& into) {
    for (const MenuItem& item : items) {
        into[item.mark] = &item;
        gather(item.items, into);
    }
}

// Names of commands stay; titles and helps are said in the language.
void localize(std::vector<MenuItem>& items, const Sources& sources) {
    for (MenuItem& item : items) {
        if (const auto source = sources.find(item.mark); source != sources.end()) {
            if (item.line.empty()) item.caption = say(source->second->caption);
            item.help = say(source->second->help);
        }
        localize(item.items, sources);
    }
}

const AcEdCommand* commandOf(const MenuItem& item) {
    const auto* stack = static_cast<AcEdCommandStack*>(acrxSysRegistry()->at(ACRX_COMMAND_DOCK));
    return item.line.empty() ? nullptr : stack->lookUpCmd(item.line.c_str());
}

void finish(std::vector<MenuItem>& items) {
    for (MenuItem& item : items) {
        if (const AcEdCommand* command = commandOf(item)) {
            item.icon = shown(command->globalName());
            item.enabled = host::commandNote(*command).built;
        }
        finish(item.items);
    }
}

const MenuItem* withIcon(const std::vector<MenuItem>& items, const QString& icon) {
    for (const MenuItem& item : items) {
        if (item.icon == icon) return &item;
        if (const MenuItem* inside = withIcon(item.items, icon)) return inside;
    }
    return nullptr;
}

} // namespace

ModuleMenus moduleMenus() {
    ModuleMenus all;
    for (const std::wstring& module : acrxDynamicLinker->loaded()) {
        const std::filesystem::path folder = std::filesystem::path(host::utf8(module)).parent_path();
        const std::string english = folder / "Corvane_eng.cuix", chinese = folder / "Corvane_chn.cuix";
        if (!host::fileExists(english) || !host::fileExists(chinese)) continue;
        const bool reads = spokenLanguage().starts_with(L"zh");
        MenuFile shownMenus = readMenuFile(reads ? chinese : english);
        const MenuFile texts = readMenuFile(chinese);
        for (const MenuFile* file : {static_cast<const MenuFile*>(&shownMenus), &texts})
            if (!file->error.empty()) all.error = file->error;
        Sources sources;
        gather(texts.menus, sources);
        localize(shownMenus.menus, sources);
        finish(shownMenus.menus);
        all.menus.insert(all.menus.end(), shownMenus.menus.begin(), shownMenus.menus.end());
    }
    for (const char* name : kButtons)
        if (const MenuItem* item = withIcon(all.menus, name); item && item->enabled)
            all.buttons.push_back(*item);
    return all;
}

} // namespace desk
