#include "model/text/section.h"

#include <algorithm>

#include "model/text/library_way.h"
#include "model/text/section_border.h"
#include "model/text/short_way.h"

namespace stelvan::model {
namespace {

std::size_t linesIn(std::string_view text) {
    return static_cast<std::size_t>(std::ranges::count(text, '\n'));
}

void empty(TomlSection& section) {
    section.fields.clear();
    section.spelt.clear();
}

}  // namespace

TomlReader::TomlReader(std::string_view text, TomlWay way) : text_(text), way_(way) {}

bool TomlReader::next(TomlSection& section) {
    while (at_ < text_.size()) {
        const std::size_t begin = at_;
        const std::size_t line = line_;
        empty(section);
        const auto end =
            way_ == TomlWay::Short ? readShortWay(text_, begin, line, section) : std::nullopt;
        at_ = end ? *end : sectionEnd(text_, begin);
        source_ = text_.substr(begin, at_ - begin);
        line_ += linesIn(source_);
        if (end) return true;
        empty(section);
        if (readByLibrary(source_, line, section)) return true;
    }
    return false;
}

}  // namespace stelvan::model
