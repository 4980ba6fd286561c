// Dialogs that show nothing: what would have been shown is kept, answers are taken from a script.
#pragma once

#include <QStringList>
#include <deque>
#include <functional>
#include <utility>
#include <vector>

#include "form/dialogs.h"

namespace stelvan::test {

class ScriptedDialogs : public form::Dialogs {
public:
    struct Message {
        QString text;
        form::Icon icon = form::Icon::None;
        QString title;
    };
    struct Asked {
        QString title;
        QString filter;
        QString start;
    };

    std::vector<Message> messages;
    std::vector<Message> questions;
    std::vector<Asked> files;
    std::vector<Asked> folders;
    std::vector<Asked> saved;
    std::deque<bool> answers;  // to confirm(); No when used up
    std::deque<QString>
        choices;  // to openFile(), saveFile() and openFolder(); cancelled when used up
    std::function<void(const QString& text)> whileShown;  // runs while a box is open

    void message(const QString& text, form::Icon icon, const QString& title) override {
        messages.push_back({text, icon, title});
        if (whileShown) whileShown(text);
    }
    bool confirm(const QString& text, const QString& title) override {
        questions.push_back({text, form::Icon::None, title});
        return take(answers, false);
    }
    QString openFile(const QString& title, const QString& filter, const QString& start) override {
        files.push_back({title, filter, start});
        return take(choices, QString());
    }
    QString saveFile(const QString& title, const QString& filter, const QString& start) override {
        saved.push_back({title, filter, start});
        return take(choices, QString());
    }
    QString openFolder(const QString& title, const QString& start) override {
        folders.push_back({title, {}, start});
        return take(choices, QString());
    }

    [[nodiscard]] QStringList texts() const {
        QStringList all;
        for (const Message& m : messages) all << m.text;
        return all;
    }

private:
    template <typename T>
    static T take(std::deque<T>& script, T otherwise) {
        if (script.empty()) return otherwise;
        T next = std::move(script.front());
        script.pop_front();
        return next;
    }
};

}  // namespace stelvan::test
