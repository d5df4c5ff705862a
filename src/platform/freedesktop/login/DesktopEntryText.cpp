#include "platform/freedesktop/login/DesktopEntryText.h"

#include <algorithm>

namespace lumatile {

namespace {

// Every byte that may stand in a word without quotes. The format reserves more; this is what needs
// no thought.
bool isPlain(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
           (byte >= '0' && byte <= '9') || byte == '/' || byte == '.' || byte == '-' ||
           byte == '_' || byte == '+' || byte == ',' || byte == ':' || byte == '@' ||
           static_cast<unsigned char>(byte) >= 0x80U;
}

bool isControl(char byte) { return static_cast<unsigned char>(byte) < 0x20U || byte == 0x7F; }

/// Undoes the escapes that every value may have.
std::string unescaped(std::string_view value) {
    std::string result;
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] != '\\' || i + 1 == value.size()) {
            result += value[i];
            continue;
        }
        switch (value[++i]) {
            case 's':
                result += ' ';
                break;
            case 'n':
                result += '\n';
                break;
            case 't':
                result += '\t';
                break;
            case 'r':
                result += '\r';
                break;
            case '\\':
                result += '\\';
                break;
            default:
                result += '\\';
                result += value[i];
        }
    }
    return result;
}

}  // namespace

std::optional<std::string> DesktopEntryText::exec(std::string_view program) {
    if (program.empty() || std::any_of(program.begin(), program.end(), isControl)) {
        return std::nullopt;
    }
    const bool needsQuotes = !std::all_of(program.begin(), program.end(),
                                          [](char byte) { return isPlain(byte) || byte == '%'; });
    std::string word;
    for (const char byte : program) {
        if (byte == '%') {
            word += "%%";  // A single one begins a field code.
        } else if (byte == '"' || byte == '`' || byte == '$') {
            word += '\\';
            word += byte;
        } else if (byte == '\\') {
            word += "\\\\";
        } else {
            word += byte;
        }
    }
    if (needsQuotes) {
        word = '"' + word + '"';
    }
    // Once more, since the command line is a value.
    std::string value;
    for (const char byte : word) {
        value += byte;
        if (byte == '\\') {
            value += byte;
        }
    }
    return value;
}

std::optional<std::string> DesktopEntryText::program(std::string_view exec) {
    const std::string line = unescaped(exec);
    std::string word;
    std::size_t i = line.find_first_not_of(" \t");
    if (i == std::string::npos) {
        return std::nullopt;
    }
    bool isQuoted = false;
    for (; i < line.size(); ++i) {
        const char byte = line[i];
        if (byte == '"') {
            isQuoted = !isQuoted;
        } else if (i + 1 < line.size() &&
                   ((byte == '\\' && isQuoted) || (byte == '%' && line[i + 1] == '%'))) {
            word += line[++i];
        } else if ((byte == ' ' || byte == '\t') && !isQuoted) {
            break;
        } else {
            word += byte;
        }
    }
    return isQuoted || word.empty() ? std::nullopt : std::optional(word);
}

std::optional<bool> DesktopEntryText::boolean(std::optional<std::string_view> value) {
    // "1" and "0" are what entries held before the format was written down, and readers take them.
    if (value == "true" || value == "1") {
        return true;
    }
    if (value == "false" || value == "0") {
        return false;
    }
    return std::nullopt;
}

bool DesktopEntryText::listHolds(std::string_view list, std::string_view item) {
    while (!list.empty()) {
        const std::size_t length = std::min(list.find(';'), list.size());
        if (list.substr(0, length) == item) {
            return true;
        }
        list.remove_prefix(std::min(length + 1, list.size()));
    }
    return false;
}

}  // namespace lumatile
