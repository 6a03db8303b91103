#pragma once

#include "forms/Dialogs.h"

#include <QPointer>
#include <QWidget>

#include <memory>

class QPrinter;

namespace velmorak {

class ReportCanvas;

// The real dialogs: message boxes, input boxes, file choosers and the printer set-up.
class QtDialogs : public Dialogs {
  public:
    // Without a printer the printer dialog sets up one of its own (see printer()).
    explicit QtDialogs(QWidget* parent = nullptr, QPrinter* printer = nullptr);
    ~QtDialogs() override;

    MsgResult messageBox(const QString& text, MsgButtons buttons = MsgButtons::OK,
                         const QString& title = QString(), MsgIcon icon = MsgIcon::None) override;
    std::optional<QString> inputBox(const QString& prompt, const QString& title,
                                    const QString& defaultText = QString()) override;
    std::optional<QString> openFileName(const QString& title, const QString& filter) override;
    std::optional<QString> saveFileName(const QString& title, const QString& filter,
                                        const QString& suggested = QString()) override;
    bool printerDialog() override;
    // A canvas over printer(); the dialog's choice (a printer, or a PDF file) is where it goes.
    ReportPrinter* reportPrinter() override;
    // The system's printers plus the PDF file that the print dialog always offers.
    int printerCount() override;

    QPrinter* printer();
    // The window dialogs belong to when none of ours is active.
    void setParent(QWidget* parent) { parent_ = parent; }
    // The title used for an empty one: the application's display name, else "Velmorak".
    static QString defaultTitle();
    static QString titleOr(const QString& title) {
        return title.isEmpty() ? defaultTitle() : title;
    }

  private:
    QWidget* owner() const;
    QPointer<QWidget> parent_;
    QPrinter* printer_;
    std::unique_ptr<QPrinter> ownPrinter_;
    std::unique_ptr<ReportCanvas> canvas_;
};

} // namespace velmorak
