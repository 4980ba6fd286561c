#include "model/publish/manual.h"

#include "model/publish/manual/chapters.h"
#include "model/publish/page_texts.h"

namespace stelvan::model {
namespace {

using manual::Chapter;
using manual::Content;
using manual::Page;
using manual::Section;

/// What the page may load: nothing but what is in it.
constexpr std::string_view kPolicy =
    "default-src 'none'; style-src 'unsafe-inline'; script-src 'unsafe-inline'; img-src data:";

void meta(Html& html, std::string_view name, std::string_view content) {
    html.open("meta").attribute("name", name).attribute("content", content).closeEmpty();
}

/// Running heads of printed pages: the title left, the chapter right.
void writePrintHeads(Page& page, const std::string& title) {
    Html& html = page.html;
    html.markup("@page{@top-left{content:" + cssString(title) + "}}\n");
    for (const Chapter& chapter : page.chapters) {
        const std::string id(chapter.id);
        html.markup("@page " + id + "{@top-right{content:" +
                    cssString(chapter.number + " " + std::string(chapter.title)) + "}}\n#" + id +
                    "{page:" + id + "}\n");
    }
}

void writeHead(Page& page) {
    Html& html = page.html;
    const std::string title = manual::titleOf(page.model, page.options);
    html.open("head");
    html.open("meta").attribute("charset", "utf-8").closeEmpty();
    html.open("meta").attribute("http-equiv", "Content-Security-Policy");
    html.attribute("content", kPolicy).closeEmpty();
    meta(html, "viewport", "width=device-width, initial-scale=1");
    meta(html, "color-scheme", "light dark");
    html.open("link").attribute("rel", "icon").attribute("href", "data:,").closeEmpty();
    html.element("title", title);
    html.open("style").markup("\n").markup(kManualStyle);
    writePrintHeads(page, title);
    html.close();
    html.element("script", "document.documentElement.className='finds'");
    html.close().markup("\n");
}

void writeFindBox(Html& html) {
    html.open("div").attribute("id", "find").attribute("role", "search");
    html.open("input").attribute("id", "find-text").attribute("type", "search");
    html.attribute("role", "combobox").attribute("aria-label", "Find an item");
    html.attribute("aria-expanded", "false").attribute("aria-controls", "find-list");
    html.attribute("aria-autocomplete", "list").attribute("autocomplete", "off");
    html.attribute("spellcheck", "false").attribute("placeholder", "Find: name, ID or text");
    html.closeEmpty();
    html.open("p").attribute("id", "find-count").attribute("role", "status").close();
    html.open("ul").attribute("id", "find-list").attribute("role", "listbox");
    html.attribute("aria-label", "Items found").attribute("hidden", "hidden").close();
    html.close().markup("\n");
}

void writeItems(Page& page, const Chapter& chapter, const Section& section) {
    switch (chapter.content) {
        case Content::Settings:
            return writeSettings(page, chapter, section);
        case Content::Variables:
        case Content::Constants:
            return writeVariables(page, chapter, section);
        case Content::Events:
            return writeEvents(page, section);
        case Content::Reports:
            return writeReports(page, chapter, section);
        case Content::Alarms:
            return writeAlarms(page, chapter, section);
        case Content::Limits:
            return writeLimits(page, chapter, section);
        case Content::About:
        case Content::Findings:
            return;
    }
}

void writeSection(Page& page, const Chapter& chapter, const Section& section) {
    Html& html = page.html;
    html.open("section").attribute("aria-labelledby", section.id);
    html.open("h3").attribute("id", section.id).text(section.title).text(" ");
    html.element("span", "count", std::to_string(section.items.size())).close();
    writeItems(page, chapter, section);
    html.close();
}

void writeChapter(Page& page, const Chapter& chapter) {
    Html& html = page.html;
    const std::string id(chapter.id);
    html.open("section").attribute("id", id).attribute("class", "chapter");
    html.attribute("aria-labelledby", id + "-title");
    if (!chapter.noun.empty()) html.attribute("data-noun", chapter.noun);
    html.open("h2").attribute("id", id + "-title");
    html.element("span", "no", chapter.number).text(" ").text(chapter.title).close();
    if (!chapter.lead.empty()) html.element("p", "lead", chapter.lead);
    if (chapter.content == Content::About) writeAbout(page);
    if (chapter.content == Content::Findings) writeFindings(page);
    const bool lists = chapter.content != Content::About && chapter.content != Content::Findings;
    if (lists && chapter.sections.empty())
        html.element("p", "The model holds no " + std::string(chapter.noun) + ".");
    for (const Section& section : chapter.sections) writeSection(page, chapter, section);
    html.close().markup("\n");
}

}  // namespace

void writeManual(const Model& model, const std::optional<std::span<const Finding>>& findings,
                 const ManualOptions& options, const Sink& sink, const Progress& progress) {
    Page page(model, options, manual::outlineOf(model, findings.has_value()), sink, progress);
    if (findings) page.findings = *findings;
    Html& html = page.html;
    html.markup("<!DOCTYPE html>\n").open("html").attribute("lang", "en").markup("\n");
    writeHead(page);
    html.open("body");
    html.open("a").attribute("class", "skip").attribute("href", "#content");
    html.text("Skip to the content").close().markup("\n");
    writeCover(page);
    writeFindBox(html);
    writeContents(page);
    html.open("main").attribute("id", "content").markup("\n");
    for (const Chapter& chapter : page.chapters) writeChapter(page, chapter);
    html.close();
    html.open("script").markup(kManualScript).close();
    html.close().close().markup("\n").finish();
}

}  // namespace stelvan::model
