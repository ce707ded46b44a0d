// Writes the public header: makeHeader TEMPLATE OUTPUT. The template holds the prose and the
// records; the lists of services and of type codes are put in where it names them.

#include <cstring>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

namespace {

constexpr size_t lineWidth = 100;

// A C comment of these lines.
std::string comment(const std::string &text) {
    std::istringstream lines(text);
    std::string result, line;
    while (std::getline(lines, line))
        result += (result.empty() ? "/* " : line.empty() ? "\n *" : "\n * ") + line;
    return result + " */\n";
}

std::string heading(const char *title, const char *text) {
    std::string rule = std::string("/* ---- ") + title + " ";
    rule += std::string(lineWidth - 3 - rule.size(), '-');
    std::string block = *text ? comment(text).substr(3) : "";
    return "\n" + rule + (*text ? "\n * " + block : " */\n");
}

// Breaks a declaration behind commas, as the rest of the header is laid out.
std::string wrapped(std::string line) {
    std::string result;
    while (line.size() > lineWidth) {
        size_t cut = line.rfind(", ", lineWidth - 2);
        if (cut == std::string::npos)
            break;
        result += line.substr(0, cut + 1) + "\n";
        line = std::string(11, ' ') + line.substr(cut + 2);
    }
    return result + line + "\n";
}

// "(int a, int b)" as written in the list, line breaks and all.
std::string withHandle(std::string parameters, const char *behind) {
    std::string inner = parameters.substr(1, parameters.size() - 2);
    return "(void *interp" + (inner.empty() ? "" : ", " + inner) + behind + ");";
}

std::string declaration(const char *result, const char *name, const char *failure,
                        const char *parameters, const char *behind, const char *help) {
    std::string type = result, text = help;
    if (type != "void")
        text += std::string("\nFailure value: ") + failure + ".";
    if (type.back() != '*')
        type += ' ';
    return "\n" + comment(text) + wrapped("ZY_API " + type + name + withHandle(parameters, behind));
}

std::string services() {
    std::string text;
#define ZY_GROUP(title, paragraph) text += heading(title, paragraph);
#define ZY_SERVICE(stage, front, road, result, name, failure, parameters, arguments, help) \
    text += declaration(#result, #name, #failure, #parameters, "", help);
#define ZY_SERVICE_V(stage, front, road, result, name, kernel, failure, parameters, arguments, \
                     last, help)                                                               \
    text += declaration(#result, #name, #failure, #parameters, ", ...", help);
#define ZY_SERVICE_AS(stage, road, result, symbol, name, failure, parameters, arguments, help) \
    text += declaration(#result, #symbol, #failure, #parameters, "", help);
#include "embed/services.inc"
    return text.substr(0, text.size() - 1);
}

std::string hostTypes() {
    std::string text;
#define ZY_HOST_TYPE(name, code, dataType, meaning) \
    text += "    ZY_TYPE_" #name " = " #code ", /* " meaning " */\n";
#include "embed/hostTypes.inc"
    text.erase(text.rfind(','), 1);
    return text.substr(0, text.size() - 1);
}

}  // namespace

int main(int argc, char **argv) {
    if (argc != 3) {
        std::cerr << "usage: makeHeader TEMPLATE OUTPUT\n";
        return 2;
    }
    std::ifstream in(argv[1]);
    std::ostringstream out;
    for (std::string line; std::getline(in, line);)
        out << (line == "@services@"    ? services()
                : line == "@hostTypes@" ? hostTypes()
                                        : line)
            << "\n";
    std::ofstream file(argv[2]);
    file << out.str();
    return in.eof() && file.flush() ? 0 : 1;
}
