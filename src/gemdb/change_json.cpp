#include "gemdb/change_json.h"

#include "gemdb/json_line.h"

namespace stelvan::gemdb {
namespace {

std::string_view wordFor(model::Change change) {
    switch (change) {
        case model::Change::Added:
            return "added";
        case model::Change::Removed:
            return "removed";
        case model::Change::Changed:
            break;
    }
    return "changed";
}

std::string_view wordFor(model::LinkChange::Kind kind) {
    switch (kind) {
        case model::LinkChange::Kind::Added:
            return "added";
        case model::LinkChange::Kind::Removed:
            return "removed";
        case model::LinkChange::Kind::Reordered:
            return "reordered";
        case model::LinkChange::Kind::Changed:
            break;
    }
    return "changed";
}

void addFields(JsonLine& line, const std::vector<model::FieldChange>& fields) {
    line.member("fields").open('[');
    for (const model::FieldChange& field : fields) {
        line.open('{').member("field").text(field.column);
        line.member("old").value(jet::toView(field.before));
        line.member("new").value(jet::toView(field.after)).close('}');
    }
    line.close(']');
}

void addLink(JsonLine& line, const model::LinkChange& link) {
    line.open('{').member("change").text(wordFor(link.kind));
    line.member("table").text(model::factsOf(link.part).table);
    line.member("target").value(jet::toView(link.target));
    line.member("name").text(link.targetName);
    line.member("old").value(jet::toView(link.before));
    line.member("new").value(jet::toView(link.after));
    addFields(line, link.fields);
    line.close('}');
}

}  // namespace

std::string changeJson(const model::ItemChange& change) {
    JsonLine line;
    line.open('{').member("change").text(wordFor(change.change));
    line.member("kind").text(model::factsOf(change.part).noun);
    line.member("table").text(change.table);
    line.member("id").value(jet::toView(change.id));
    if (change.part == model::Part::Limits) line.member("place").value(jet::toView(change.place));
    line.member("name").text(change.name);
    addFields(line, change.fields);
    line.member("links").open('[');
    for (const model::LinkChange& link : change.links) addLink(line, link);
    return line.close(']').close('}').take();
}

}  // namespace stelvan::gemdb
