#include "browser/grid/rows_as_text.h"

#include "base/text.h"
#include "form/text.h"

namespace stelvan::browser {
namespace {

std::string quoted(const std::string& text, char separator) {
    if (text.find_first_of(std::string{separator, '"', '\r', '\n'}) == std::string::npos)
        return text;
    std::string whole = "\"";
    for (const char c : text) {
        if (c == '"') whole += '"';
        whole += c;
    }
    return whole + '"';
}

}  // namespace

void RowsAsText::write(std::span<const std::int32_t> rows, TextForm form,
                       const model::Sink& sink) const {
    const auto writeLine = [&](const auto& textOf) {
        std::string line;
        for (const std::size_t field : fields) {
            if (field != fields.front()) line += form.separator;
            line += quoted(textOf(field), form.separator);
        }
        sink(line + form.lineEnd);
    };
    writeLine([&](std::size_t field) { return records.fieldName(field); });
    records.eachStored(rows, [&](std::size_t, const std::vector<db::Value>* values) {
        if (values == nullptr) return;
        writeLine([&](std::size_t field) { return form::toUtf8(cell(field, (*values)[field])); });
    });
}

}  // namespace stelvan::browser
