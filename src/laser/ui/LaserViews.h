#pragma once

class QWidget;

namespace velmorak {

class Form;

// The OLD laser window: its one register grid with each row's scroll bar and value beside the
// bits, the actions and the serial number on the right.
QWidget* buildFrmLaserView(Form& form);
// The NEW laser window: the five pages of the stream, the same actions on the right.
QWidget* buildFrmLaserOmronView(Form& form);

} // namespace velmorak
