// An XML document written piece by piece, so that a large one needs no memory: a root, sections in
// it, and in these the entries, each an element that is made whole and then written.
#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "model/core/sink.h"

namespace stelvan::model {

/// Appends an element with a text; an empty one has none. The text holds what XML can.
pugi::xml_node addElement(pugi::xml_node parent, const char* name, const std::string& text);

class XmlPieces {
public:
    explicit XmlPieces(const Sink& sink) : target_(sink) {}

    /// `tag` is the name with its attributes, as it stands in the document.
    template <typename Body>
    void root(std::string_view name, std::string_view tag, Body body) {
        line("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
        line("<" + std::string(tag) + ">");
        body();
        line("</" + std::string(name) + ">");
    }

    /// In the root. One that gets no entries is empty, or absent where it is `optional`.
    template <typename Body>
    void section(const std::string& name, bool optional, Body body) {
        section_ = name;
        body();
        if (section_.empty())
            line("  </" + name + ">");
        else if (!optional)
            line("  <" + name + " />");
        section_.clear();
    }

    /// In a section: `fill` gets the new element.
    template <typename Fill>
    void entry(const char* name, Fill fill) {
        if (!section_.empty()) line("  <" + section_ + ">");
        section_.clear();
        element(name, 2, fill);
    }

    /// In the root, without a section.
    template <typename Fill>
    void single(const char* name, Fill fill) {
        element(name, 1, fill);
    }

private:
    struct Target : pugi::xml_writer {
        explicit Target(const Sink& to) : sink(to) {}
        void write(const void* data, std::size_t size) override {
            sink({static_cast<const char*>(data), size});
        }
        const Sink& sink;
    };

    template <typename Fill>
    void element(const char* name, unsigned depth, Fill& fill) {
        document_.reset();
        const pugi::xml_node node = document_.append_child(name);
        fill(node);
        node.print(target_, "  ", pugi::format_default, pugi::encoding_utf8, depth);
    }
    void line(const std::string& text) { target_.sink(text + "\n"); }

    Target target_;
    pugi::xml_document document_;
    std::string section_;  // not begun yet
};

}  // namespace stelvan::model
