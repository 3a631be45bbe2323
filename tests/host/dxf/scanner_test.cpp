// Groups out of bytes: the shapes that text files come in, the binary forms, and faulty values.
#include "host/dxf/scanner.h"

#include <gtest/gtest.h>

#include <cmath>

#include "host/dxf/sentinel.h"
#include "host/dxf/sink.h"

using namespace host;
using namespace host::dxf;

namespace {

struct Scanned {
    GroupList groups;
    std::string fault;
    std::vector<std::string> repairs;
    long line = 0;
};

Scanned scan(std::string_view bytes) {
    Scanned result;
    Scanner scanner(bytes);
    Group group;
    for (;;) {
        const Scanner::Step step = scanner.next(group);
        result.line = scanner.line();
        if (step == Scanner::Step::fault) result.fault = scanner.fault();
        if (step != Scanner::Step::group) return result;
        if (group.type == GroupType::handle) group.text = {};
        result.groups.append(group);
        if (scanner.repair()) result.repairs.push_back(scanner.repair());
    }
}

GroupList everyType() {
    GroupList groups;
    groups.append(Group::ofText(0, "LINE"));
    groups.append(Group::ofHandle(5, 0x2FA));
    groups.append(Group::ofText(1, " blanks around "));
    groups.append(Group::ofReal(10, -1.0 / 3));
    groups.append(Group::ofReal(1040, 6.02e23));
    groups.append(Group::ofInteger(70, -7));
    groups.append(Group::ofInteger(90, -2000000000));
    groups.append(Group::ofInteger(160, 9000000000000000000));
    groups.append(Group::ofInteger(290, 1));
    groups.append(Group::ofInteger(1071, 123456789));
    groups.append(Group::ofBytes(310, std::string_view("\0\xFF\x7F", 3)));
    groups.append(Group::ofBytes(1004, ""));
    groups.append(Group::ofHandle(360, 0x123456789ABCDEF));
    groups.append(Group::ofText(1000, "tab\there"));
    return groups;
}

std::string written(GroupSink& sink, const GroupList& groups) {
    for (const Group group : groups) sink.write(group);
    std::string bytes;
    for (std::string_view chunk : sink.chunks()) bytes += chunk;
    return bytes;
}

} // namespace

TEST(Scanner, EveryTypeComesBackFromEveryForm) {
    const GroupList groups = everyType();
    const TextEncoder::Form form{"ANSI_1252", true};
    TextSink textSink{TextEncoder(form)};
    BinarySink wideSink(TextEncoder(form), false, true), narrowSink(TextEncoder(form), true, true);
    for (GroupSink* sink : {static_cast<GroupSink*>(&textSink), static_cast<GroupSink*>(&wideSink),
                            static_cast<GroupSink*>(&narrowSink)}) {
        const Scanned back = scan(written(*sink, groups));
        EXPECT_EQ(back.fault, "");
        EXPECT_TRUE(back.groups == groups);
        EXPECT_TRUE(back.repairs.empty());
    }
}

TEST(Scanner, TextFilesMayEndTheirLinesAsTheyLike) {
    const std::string plain = "0\nLINE\n8\n0\n40\n2.5\n1\na b\n";
    const auto replaced = [&](const std::string& end) {
        std::string out;
        for (char c : plain) out += c == '\n' ? end : std::string(1, c);
        return out;
    };
    const GroupList expected = scan(plain).groups;
    const struct {
        const char* what;
        std::string bytes;
    } rows[] = {
        {"carriage return and line feed", replaced("\r\n")},
        {"carriage return alone", replaced("\r")},
        {"two carriage returns", replaced("\r\r\n")},
        {"byte order mark", "\xEF\xBB\xBF" + plain},
        {"blanks before codes", "  0\nLINE\n  8\n0\n 40\n  2.5  \n  1\na b\n"},
        {"comments", "999\nby hand\n0\nLINE\n8\n0\n999\n40\n40\n2.5\n1\na b\n"},
        {"no end of the last line", plain.substr(0, plain.size() - 1)},
        {"Ctrl-Z and blank lines behind", plain + "\n\r\n\x1a"},
        {"a plus sign", "0\nLINE\n8\n0\n40\n+2.5\n1\na b\n"},
        {"blanks round a kind", "0\n LINE \n8\n0\n40\n2.5\n1\na b\n"},
    };
    for (const auto& row : rows) {
        const Scanned found = scan(row.bytes);
        EXPECT_EQ(found.fault, "") << row.what;
        EXPECT_TRUE(found.groups == expected) << row.what;
    }
}

TEST(Scanner, FaultyNumbersArePutRightOrRefused) {
    const struct {
        int code;
        const char* value;
        bool refused;
        double expected; // whole numbers and reals alike
    } rows[] = {
        {40, "1e400", false, 0},
        {40, "nan", false, 0},
        {40, "-1.#IND", false, 0},
        {40, "1e-400", false, 0},
        {40, "", false, 0},
        {40, "-inf", false, 0},
        {40, "1,5", true, 0},
        {40, "abc", true, 0},
        {40, "0x10", true, 0},
        {70, "2.9", false, 2},
        {70, "-3.0", false, -3},
        {70, "256QSW", false, 256},
        {70, "", false, 0},
        {70, "nan", false, 0},
        {70, "abc", true, 0},
        {90, "1e30", false, 0},
        {160, "99999999999999999999", false, 0},
    };
    for (const auto& row : rows) {
        const Scanned found = scan("0\nX\n" + std::to_string(row.code) + "\n" + row.value + "\n");
        EXPECT_EQ(!found.fault.empty(), row.refused) << row.code << " " << row.value;
        if (row.refused) {
            EXPECT_EQ(found.line, 3);
            EXPECT_NE(found.fault.find(row.value), std::string::npos) << found.fault;
            continue;
        }
        Group group;
        ASSERT_TRUE(found.groups.find(row.code, group));
        EXPECT_EQ(row.code == 40 ? group.real : double(group.integer), row.expected) << row.value;
        EXPECT_EQ(found.repairs.size(), std::string(row.value) == "1e-400" ? 0u : 1u) << row.value;
    }
}

TEST(Scanner, BinaryReadingStopsAtACutValue) {
    const TextEncoder::Form form{"ANSI_1252", true};
    BinarySink sink(TextEncoder(form), false, true);
    const std::string whole = written(sink, everyType());
    for (size_t length = kBinarySentinel.size(); length < whole.size(); ++length) {
        const Scanned found = scan(std::string_view(whole).substr(0, length));
        size_t count = 0;
        for (const Group group : found.groups) count += group.code >= 0;
        EXPECT_LT(count, 14u);
    }
}

TEST(Scanner, LongBytesAreDividedInBinaryFiles) {
    const std::string bytes(1000, '\x5A');
    GroupList groups;
    groups.append(Group::ofBytes(310, bytes));
    BinarySink sink(TextEncoder(TextEncoder::Form{}), false, true);
    std::string joined;
    for (const Group group : scan(written(sink, groups)).groups) joined += group.text;
    EXPECT_EQ(joined, bytes);
}
