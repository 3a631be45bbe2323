// Reads the language file and finds translations in it.
#include "core/language_file.h"

#include "core/host/system.h"

namespace corvane {
namespace {

constexpr std::wstring_view kWhite = L" \t\r\n";

std::wstring_view trimLeft(std::wstring_view text) {
    const size_t first = text.find_first_not_of(kWhite);
    return first == text.npos ? std::wstring_view() : text.substr(first);
}
std::wstring_view trim(std::wstring_view text) {
    text = trimLeft(text);
    return text.substr(0, text.find_last_not_of(kWhite) + 1);
}

std::wstring unescape(std::wstring_view value) {
    std::wstring out;
    out.reserve(value.size());
    for (size_t i = 0; i < value.size(); ++i) {
        const wchar_t next = value[i] == L'\\' && i + 1 < value.size() ? value[i + 1] : L'\0';
        switch (next) {
        case L'n': out += L'\n', ++i; break;
        case L'r': out += L'\r', ++i; break;
        case L't': out += L'\t', ++i; break;
        case L'\\': out += L'\\', ++i; break;
        default: out += value[i];
        }
    }
    return out;
}

} // namespace

std::uint64_t TextHash(std::wstring_view text) {
    std::wstring unified;
    unified.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'\r' && i + 1 < text.size() && text[i + 1] == L'\n') continue;
        unified += text[i] == L'\r' ? L'\n' : text[i];
    }
    return host::hashUtf16(unified, 0x14650FB0739D0383u);
}

std::wstring NormalizeLanguage(std::wstring_view code) {
    std::wstring normal = host::lower(trim(code));
    for (wchar_t& c : normal)
        if (c == L'_') c = L'-';
    return normal;
}

std::wstring PrimarySubtag(const std::wstring& code) { return code.substr(0, code.find(L'-')); }

bool SameLanguage(const std::wstring& a, const std::wstring& b) {
    return host::equalNoCase(PrimarySubtag(a), PrimarySubtag(b));
}

bool LessNoCase::operator()(const std::wstring& a, const std::wstring& b) const {
    return host::compareNoCase(a, b) < 0;
}

void LanguageFile::Read(std::wstring_view text) {
    std::wstring section;
    while (!text.empty()) {
        const size_t end = text.find(L'\n');
        const std::wstring_view line = trim(text.substr(0, end));
        text = end == text.npos ? std::wstring_view() : text.substr(end + 1);
        if (line.empty() || line.front() == L';' || line.front() == L'#') continue;
        if (line.front() == L'[' && line.back() == L']') {
            section = host::lower(trim(line.substr(1, line.size() - 2)));
            continue;
        }
        const size_t equals = line.find(L'=');
        if (equals == line.npos) continue;
        const std::wstring key(trim(line.substr(0, equals)));
        const std::wstring value = unescape(trimLeft(line.substr(equals + 1)));
        if (section == L"text") {
            if (!key.empty()) TranslationMap[key] = value;
        } else if (section == L"config" || section == L"language") {
            const std::wstring name = host::lower(key);
            if (name == L"sourcelanguage") SourceLanguage = NormalizeLanguage(value);
            if (name == L"fallbacklanguage") FallbackLanguage = NormalizeLanguage(value);
            if (name == L"defaultlanguage" || name == L"language")
                ConfiguredLanguage = NormalizeLanguage(value);
        }
    }
}

std::wstring LanguageFile::LookupExact(std::wstring_view text, const std::wstring& language) const {
    if (text.empty() || language.empty()) return {};
    CString hash;
    hash.Format(L"%016I64X", static_cast<unsigned long long>(TextHash(text)));
    const auto find = [&](const std::wstring& code) {
        const auto at = TranslationMap.find(hash.str() + L"." + code);
        return at == TranslationMap.end() ? std::wstring() : at->second;
    };
    std::wstring found = find(language);
    const std::wstring primary = PrimarySubtag(language);
    if (found.empty() && !primary.empty() && primary != language) found = find(primary);
    return found;
}

std::wstring LanguageFile::LookupTrimmed(std::wstring_view text, const std::wstring& language) const {
    const std::wstring_view core = trim(text);
    if (core.empty() || core.size() == text.size()) return {};
    const std::wstring found = LookupExact(core, language);
    if (found.empty()) return {};
    const size_t lead = size_t(core.data() - text.data());
    return std::wstring(text.substr(0, lead)) + found + std::wstring(text.substr(lead + core.size()));
}

std::wstring DecodeLanguageFile(const std::string& bytes) {
    if (bytes.starts_with("\xEF\xBB\xBF")) return host::wide(std::string_view(bytes).substr(3));
    if (bytes.starts_with("\xFF\xFE")) {
        std::u16string units;
        for (size_t i = 2; i + 1 < bytes.size(); i += 2)
            units += char16_t((unsigned char)bytes[i] | (unsigned char)bytes[i + 1] << 8);
        return host::fromUtf16(units);
    }
    return host_door::decodeSystem(bytes);
}

} // namespace corvane
