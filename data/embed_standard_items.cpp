// Writes the rows of the standard as a C++ source, so that a model can be compared with them
// without a file at hand. A step of the build; see build.cmake.
#include <cstdio>
#include <exception>
#include <fstream>

#include "data/builder/table_text.h"

namespace {

using namespace stelvan::data;

/// As a string literal: every byte that is not plain ASCII as three octal digits.
std::string literal(const std::string& text) {
    std::string out = "\"";
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        const bool plain = byte >= 0x20 && byte < 0x7F && character != '"' && character != '\\';
        if (plain) {
            out += character;
            continue;
        }
        char escape[8];
        std::snprintf(escape, sizeof escape, "\\%03o", static_cast<unsigned>(byte));
        out += escape;
    }
    return out + '"';
}

/// Cells stand row by row; a cell that is Null has no text to point to.
void writeTable(std::ostream& out, const TableRows& table, std::size_t number) {
    out << "constexpr std::string_view kColumns" << number << "[] = {";
    for (const std::string& column : table.columns) out << literal(column) << ", ";
    out << "};\nconstexpr std::string_view kCells" << number << "[] = {\n";
    for (const Cells& row : table.rows) {
        for (const Cell& cell : row) out << (cell ? literal(*cell) : "{}") << ", ";
        out << "\n";
    }
    out << "};\n";
}

void write(std::ostream& out, const std::vector<TableRows>& tables) {
    out << "// Made by embed_standard_items; edit data/standard/*.tsv instead.\n"
           "#include \"model/check/standard_items.h\"\n\n"
           "namespace stelvan::model {\nnamespace {\n\n";
    for (std::size_t number = 0; number < tables.size(); ++number)
        writeTable(out, tables[number], number);
    out << "\nconstexpr StandardTable kTables[] = {\n";
    for (std::size_t number = 0; number < tables.size(); ++number)
        out << "    {" << literal(tables[number].table) << ", kColumns" << number << ", kCells"
            << number << "},\n";
    out << "};\n\n}  // namespace\n\n"
           "std::span<const StandardTable> standardTables() {\n    return kTables;\n}\n\n"
           "}  // namespace stelvan::model\n";
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "embed_standard_items FOLDER OUTPUT\n");
        return 1;
    }
    try {
        std::ofstream out(argv[2]);
        write(out, readTables(argv[1]));
        out.close();
        if (!out) throw std::runtime_error("cannot be written");
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s: %s\n", argv[2], failure.what());
        return 1;
    }
    return 0;
}
