#include "model/publish/sml.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <span>

#include "base/hex.h"
#include "base/text.h"
#include "gem/formats.h"
#include "gem/schema.h"
#include "model/publish/item.h"
#include "model/publish/shown.h"

namespace stelvan::model {
namespace {

namespace schema = gem::schema;

constexpr std::string_view kDataId = "1";
constexpr std::string_view kEnableAlarm = "128";  // bit 8 of ALED

std::string hexByte(std::uint8_t byte) {
    return "0x" + base::upperCase(base::hexText(std::span(&byte, 1)));
}

/// "plain", "two " 0x22 "parts" 0x22
std::string quotedRuns(std::string_view text) {
    std::string sml;
    bool open = false;
    for (const char c : text) {
        const bool plain = c >= ' ' && c <= '~' && c != '"';
        if (open && !plain) sml += '"';
        if (!(open && plain) && !sml.empty()) sml += ' ';
        if (!open && plain) sml += '"';
        open = plain;
        sml += plain ? std::string(1, c) : hexByte(static_cast<std::uint8_t>(c));
    }
    if (open || sml.empty()) sml += sml.empty() ? "\"\"" : "\"";
    return sml;
}

/// How SML spells a value of a format.
std::string spelled(std::string_view format, const std::string& value) {
    if (format == "A") return quotedRuns(value);
    if (format != "B") return value;
    std::uint8_t byte = 0;
    std::from_chars(value.data(), value.data() + value.size(), byte);
    return hexByte(byte);
}

std::string_view typeName(std::string_view format) {
    return format == "BL" ? "BOOLEAN" : format;
}

class Writer {
public:
    Writer(const Sink& sink, Notes& notes) : sink_(sink), notes_(notes) {}

    /// All that are written here expect an answer.
    void begin(std::string_view header) {
        if (!first_) text_ += '\n';
        first_ = false;
        text_.append(header).append(" W\n");
    }
    void end() {
        text_.pop_back();
        text_ += ".\n";
        sink_(text_);
        text_.clear();
    }

    void open(std::size_t count) {
        indent();
        text_.append("<L [").append(std::to_string(count)).append("]\n");
        ++depth_;
    }
    void close() {
        --depth_;
        indent();
        text_ += ">\n";
    }
    void scalar(std::string_view format, const std::string& value) {
        indent();
        text_.append("<").append(typeName(format)).append(" ");
        text_.append(spelled(format, value)).append(">\n");
    }
    void id(const Item& item) { scalar("U4", std::to_string(*item.id())); }

    template <typename Items, typename Body>
    void list(const Items& items, Body body) {
        if (items.empty()) return emptyList();
        open(items.size());
        for (const auto& item : items) body(item);
        close();
    }

    void item(const SecsItem& item) {
        if (!item.fault.empty()) notes_.add(item.variable, item.fault + insteadOf(item));
        if (item.format.empty()) return emptyList();
        if (gem::isList(item.format))
            return list(item.items, [this](const SecsItem& child) { this->item(child); });
        if (item.value) return scalar(item.format, *item.value);
        indent();
        text_.append("<").append(typeName(item.format)).append(">\n");
    }

private:
    void indent() { text_.append(2 * depth_, ' '); }
    void emptyList() {
        indent();
        text_ += "<L [0]>\n";
    }
    static const char* insteadOf(const SecsItem& item) {
        if (item.format.empty()) return "; an empty list stands for it";
        return gem::isList(item.format) ? "; that one is left out"
                                        : "; an empty item stands for it";
    }

    const Sink& sink_;
    Notes& notes_;
    std::string text_;
    std::size_t depth_ = 0;
    bool first_ = true;
};

void defineReports(Writer& sml, const Catalogue& catalogue) {
    if (catalogue.reports.empty()) return;
    sml.begin("S2F33");
    sml.open(2);
    sml.scalar("U4", std::string(kDataId));
    sml.list(catalogue.reports, [&](const Catalogue::Report& report) {
        sml.open(2);
        sml.id(report.item);
        sml.list(report.variables, [&](const Item& variable) { sml.id(variable); });
        sml.close();
    });
    sml.close();
    sml.end();
}

void linkReports(Writer& sml, const Catalogue& catalogue) {
    std::vector<const Catalogue::Event*> linked;
    for (const Catalogue::Event& event : catalogue.events)
        if (!event.reports.empty()) linked.push_back(&event);
    if (linked.empty()) return;
    sml.begin("S2F35");
    sml.open(2);
    sml.scalar("U4", std::string(kDataId));
    sml.list(linked, [&](const Catalogue::Event* event) {
        sml.open(2);
        sml.id(event->item);
        sml.list(event->reports, [&](const Catalogue::Report* report) { sml.id(report->item); });
        sml.close();
    });
    sml.close();
    sml.end();
}

void enableEvents(Writer& sml, const Catalogue& catalogue) {
    std::vector<Item> enabled;
    for (const Catalogue::Event& event : catalogue.events)
        if (isSet(event.item, schema::event::kEnable)) enabled.push_back(event.item);
    if (enabled.empty()) return;
    sml.begin("S2F37");
    sml.open(2);
    sml.scalar("BL", "TRUE");
    sml.list(enabled, [&](const Item& event) { sml.id(event); });
    sml.close();
    sml.end();
}

void enableAlarms(Writer& sml, const Catalogue& catalogue) {
    for (const Item& alarm : catalogue.alarms) {
        if (!isSet(alarm, schema::alarm::kEnable)) continue;
        sml.begin("S5F3");
        sml.open(2);
        sml.scalar("B", std::string(kEnableAlarm));
        sml.id(alarm);
        sml.close();
        sml.end();
    }
}

void sendEvents(Writer& sml, const Catalogue& catalogue, const CrossReference& references) {
    for (const Catalogue::Event& event : catalogue.events) {
        sml.begin("S6F11");
        sml.open(3);
        sml.scalar("U4", std::string(kDataId));
        sml.id(event.item);
        sml.list(event.reports, [&](const Catalogue::Report* report) {
            sml.open(2);
            sml.id(report->item);
            sml.list(report->variables,
                     [&](const Item& variable) { sml.item(secsItem(variable, references)); });
            sml.close();
        });
        sml.close();
        sml.end();
    }
}

}  // namespace

void writeSml(const Catalogue& catalogue, const CrossReference& references, const Sink& sink,
              Notes& notes) {
    Writer sml(sink, notes);
    defineReports(sml, catalogue);
    linkReports(sml, catalogue);
    enableEvents(sml, catalogue);
    enableAlarms(sml, catalogue);
    sendEvents(sml, catalogue, references);
}

}  // namespace stelvan::model
