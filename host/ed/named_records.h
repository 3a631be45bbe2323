// Records that the user saves, restores, lists and deletes by name: views and coordinate systems.
#pragma once
#include <string>

#include "host/ed/host_command_tools.h"
#include "host/ed/prompting.h"

namespace host {

// The name the user gives; empty for Enter and Esc.
inline std::wstring askName(const wchar_t* prompt) {
    std::wstring name;
    return acedGetString(1, prompt, name) == RTNORM ? name : std::wstring();
}

// The record of that name, made when there is none; null, and told, for what can't be a name.
template <class Record, class Table> AcDbObjectPointer<Record> recordToFill(const std::wstring& name) {
    if (const AcDbObjectId present = drawing().find(Table::desc(), name); !present.isNull())
        return {present, AcDb::kForWrite};
    auto made = std::make_unique<Record>();
    AcDbObjectPointer<Table> table(drawing().tableId(Table::desc()), AcDb::kForWrite);
    AcDbObjectId id;
    if (made->setName(name.c_str()) != Acad::eOk || !table || table->add(id, made.get()) != Acad::eOk) {
        printLine(L"\n\"" + name + L"\" can't be a name.");
        return {};
    }
    made.release()->close();
    return {id, AcDb::kForWrite};
}

template <class Table> void listNames(const wchar_t* what) {
    AcDbObjectPointer<AcDbSymbolTable> table(drawing().tableId(Table::desc()), AcDb::kForRead);
    size_t count = 0;
    for (const AcDbObjectId id : table->records()) {
        AcDbObjectPointer<AcDbSymbolTableRecord> record(id, AcDb::kForRead);
        if (!record) continue;
        printLine(L"\n  \"" + record->name() + L"\"");
        ++count;
    }
    printLine(L"\n" + std::to_wstring(count) + L" " + what);
}

template <class Table> void deleteNamed(const wchar_t* what) {
    const std::wstring name = askName((std::wstring(L"\nEnter name of ") + what + L" to delete: ").c_str());
    if (name.empty()) return;
    AcDbObjectPointer<AcDbSymbolTableRecord> record(drawing().find(Table::desc(), name), AcDb::kForWrite);
    if (!record || record->erase() != Acad::eOk)
        printLine(L"\nThe drawing has no " + std::wstring(what) + L" \"" + name + L"\".");
}

} // namespace host
