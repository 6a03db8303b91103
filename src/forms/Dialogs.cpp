#include "forms/Dialogs.h"

namespace velmorak {

MsgResult ScriptedDialogs::messageBox(const QString& text, MsgButtons buttons, const QString& title,
                                      MsgIcon) {
    asked_.push_back({"message", text, title, buttons});
    if (!results_.empty()) {
        auto r = results_.front();
        results_.pop_front();
        return r;
    }
    return buttons == MsgButtons::YesNo || buttons == MsgButtons::YesNoCancel ? MsgResult::Yes
                                                                              : MsgResult::OK;
}

std::optional<QString> ScriptedDialogs::nextText() {
    if (texts_.empty()) return std::nullopt;
    auto t = texts_.front();
    texts_.pop_front();
    return t;
}

std::optional<QString> ScriptedDialogs::inputBox(const QString& prompt, const QString& title,
                                                 const QString&) {
    asked_.push_back({"input", prompt, title});
    return nextText();
}

std::optional<QString> ScriptedDialogs::openFileName(const QString& title, const QString&) {
    asked_.push_back({"open", QString(), title});
    return nextText();
}

std::optional<QString> ScriptedDialogs::saveFileName(const QString& title, const QString&,
                                                     const QString&) {
    asked_.push_back({"save", QString(), title});
    return nextText();
}

bool ScriptedDialogs::printerDialog() {
    asked_.push_back({"printer", QString(), QString()});
    if (!results_.empty()) {
        auto r = results_.front();
        results_.pop_front();
        return r == MsgResult::OK || r == MsgResult::Yes;
    }
    return false;
}

QStringList ScriptedDialogs::messages() const {
    QStringList out;
    for (const auto& a : asked_)
        if (a.kind == "message") out << a.text;
    return out;
}

} // namespace velmorak
