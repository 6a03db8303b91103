#pragma once

#include <QString>

#include <functional>

namespace velmorak {

class Dialogs;
class Form;

// Puts the picture of a window on the printer chosen in the printer dialog; the tool's drawing
// side sets it. It throws RunTimeError 482 when the printer cannot be used.
using WindowPrinter = std::function<void(Form&)>;
void setWindowPrinter(WindowPrinter printer);

// Printing a window as a picture of itself: the printer dialog, then the picture; a cancel or a
// failure ends in a message.
void printWindowCapture(Dialogs& dialogs, Form& form);

// The pictures of the card and its switch, by the name the windows use ("RRGB1s"): a drawing
// of our own in the application folder, else in the installed data folder.
QString cardPicture(const QString& appPath, const QString& name);

} // namespace velmorak
