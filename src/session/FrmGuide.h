#pragma once

#include "forms/Form.h"

#include <QStringList>

namespace velmorak {

class Dialogs;

// The user guide, from the main window's Help menu: the text of user-guide.md, found beside
// the database, beside the program, or where it is installed.
class FrmGuide : public Form {
  public:
    static constexpr const char* kFile = "user-guide.md";
    FrmGuide(Dialogs& dialogs, QStringList folders);

    // The guide's text (Markdown); empty until loaded or when no copy was found.
    const QString& text() const { return text_; }
    const QString& path() const { return path_; }

  protected:
    void formLoad() override;

  private:
    Dialogs& dialogs_;
    QStringList folders_;
    QString text_;
    QString path_;
};

// Where the guide is looked for, first first: the application folder, the program's folder,
// and the installed data folder beside it.
QStringList guideFolders(const QString& appPath);

} // namespace velmorak
