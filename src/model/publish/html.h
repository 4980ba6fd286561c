// Writes HTML that is well-formed XML too, element by element, and escapes in one place.
//
// What a text holds cannot break the page: markup is escaped, line breaks become <br/>, and
// characters that no page may hold are shown by signs that stand for them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/core/sink.h"

namespace stelvan::model {

/// Appends `text` as content of an element or of an attribute. Control characters become their
/// pictures (U+2400 and on), bytes that are no UTF-8, halves of surrogate pairs and codes without a
/// character U+FFFD. Line breaks (CR LF is one) become `lineBreak`.
void appendEscaped(std::string& out, std::string_view text, std::string_view lineBreak);

/// A text as a quoted string of a style sheet.
[[nodiscard]] std::string cssString(std::string_view text);

class Html {
public:
    /// Pieces go to `sink` as they come; it must outlive the writer, as must all names of elements.
    explicit Html(const Sink& sink) : sink_(sink) {}

    /// Begins an element; attributes may follow at once.
    Html& open(std::string_view name);
    Html& attribute(std::string_view name, std::string_view value);
    Html& attribute(std::string_view name, std::int64_t value);
    /// Ends the element that was begun last and is still open.
    Html& close();
    /// Ends an element that never holds anything (col, meta, input).
    Html& closeEmpty();

    Html& text(std::string_view text);
    /// A text of our own, as it is.
    Html& markup(std::string_view own);

    /// A whole element that holds only text.
    Html& element(std::string_view name, std::string_view text);
    Html& element(std::string_view name, std::string_view cssClass, std::string_view text);

    /// Hands over what is left. std::logic_error where an element is open still.
    void finish();

private:
    void endTag();
    void flushIfLong();

    const Sink& sink_;
    std::string out_;
    std::vector<std::string_view> open_;
    bool inTag_ = false;
};

}  // namespace stelvan::model
