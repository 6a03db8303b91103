#pragma once

#include <QString>
#include <QStringList>

#include <deque>
#include <optional>
#include <vector>

namespace velmorak {

class ReportPrinter;

enum class MsgButtons { OK, OKCancel, YesNo, YesNoCancel };
enum class MsgIcon { None, Information, Question, Exclamation, Critical };
enum class MsgResult { OK = 1, Cancel = 2, Yes = 6, No = 7 };

// Every message box, input box, file chooser and printer dialog of the tool goes through here.
class Dialogs {
  public:
    virtual ~Dialogs() = default;
    // An empty title means the default title (the application's name).
    virtual MsgResult messageBox(const QString& text, MsgButtons buttons = MsgButtons::OK,
                                 const QString& title = QString(),
                                 MsgIcon icon = MsgIcon::None) = 0;
    // Returns the text typed, or nothing when cancelled.
    virtual std::optional<QString> inputBox(const QString& prompt, const QString& title,
                                            const QString& defaultText = QString()) = 0;
    // Return the chosen path, or nothing when cancelled.
    virtual std::optional<QString> openFileName(const QString& title, const QString& filter) = 0;
    virtual std::optional<QString> saveFileName(const QString& title, const QString& filter,
                                                const QString& suggested = QString()) = 0;
    // Printer set-up; false when cancelled.
    virtual bool printerDialog() = 0;
    // The printer that the printer dialog sets up (nullptr: none at all).
    virtual ReportPrinter* reportPrinter() { return nullptr; }
    // How many printers the system offers (Printers.Count).
    virtual int printerCount() { return 0; }
};

// Test double: records every dialog asked and returns scripted answers in order. With no answer
// scripted, a message box returns OK (or Yes), and every other dialog is cancelled.
class ScriptedDialogs : public Dialogs {
  public:
    struct Asked {
        QString kind; // "message", "input", "open", "save", "printer"
        QString text;
        QString title;
        MsgButtons buttons = MsgButtons::OK;
    };

    MsgResult messageBox(const QString& text, MsgButtons buttons, const QString& title,
                         MsgIcon icon) override;
    std::optional<QString> inputBox(const QString& prompt, const QString& title,
                                    const QString& defaultText) override;
    std::optional<QString> openFileName(const QString& title, const QString& filter) override;
    std::optional<QString> saveFileName(const QString& title, const QString& filter,
                                        const QString& suggested) override;
    bool printerDialog() override;
    ReportPrinter* reportPrinter() override { return printer_; }
    int printerCount() override { return printerCount_; }

    // What the printer dialog prints on, and how many printers there are (1 by default).
    void setPrinter(ReportPrinter* p) { printer_ = p; }
    void setPrinterCount(int n) { printerCount_ = n; }

    void answer(MsgResult r) { results_.push_back(r); }
    void answerText(std::optional<QString> t) { texts_.push_back(std::move(t)); }

    const std::vector<Asked>& asked() const { return asked_; }
    QStringList messages() const; // the texts of the message boxes, in order
    void clear() { asked_.clear(); }

  private:
    std::optional<QString> nextText();
    std::vector<Asked> asked_;
    std::deque<MsgResult> results_;
    std::deque<std::optional<QString>> texts_;
    ReportPrinter* printer_ = nullptr;
    int printerCount_ = 1;
};

} // namespace velmorak
