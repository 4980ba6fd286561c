#include "gemdb/json_line.h"

#include <utility>

namespace stelvan::gemdb {

JsonLine& JsonLine::member(std::string_view name) {
    separate();
    appendJsonText(out_, name);
    out_ += ':';
    needsComma_ = false;
    return *this;
}

JsonLine& JsonLine::text(std::string_view value) {
    separate();
    appendJsonText(out_, value);
    return *this;
}

JsonLine& JsonLine::number(long long value) {
    separate();
    out_ += std::to_string(value);
    return *this;
}

JsonLine& JsonLine::flag(bool value) {
    separate();
    out_ += value ? "true" : "false";
    return *this;
}

JsonLine& JsonLine::value(const jet::ValueView& value) {
    separate();
    appendJsonValue(out_, value);
    return *this;
}

JsonLine& JsonLine::open(char bracket) {
    separate();
    out_ += bracket;
    needsComma_ = false;
    return *this;
}

JsonLine& JsonLine::close(char bracket) {
    out_ += bracket;
    needsComma_ = true;
    return *this;
}

std::string JsonLine::take() {
    out_ += '\n';
    needsComma_ = false;
    return std::exchange(out_, std::string());
}

void JsonLine::separate() {
    if (needsComma_) out_ += ',';
    needsComma_ = true;
}

}  // namespace stelvan::gemdb
