#pragma once

#include <QRect>
#include <QString>

namespace velmorak {

class Form;
class Settings;

// Moves an editor window to the "x,y" stored under section/"Layout", kept on the screen by at
// least half the window; an empty or comma-less text leaves it where it is.
void placeFromLayout(Form& f, const Settings& settings, const QRect& screen,
                     const QString& section);

} // namespace velmorak
