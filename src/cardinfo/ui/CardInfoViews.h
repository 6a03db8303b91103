#pragma once

class QWidget;

namespace velmorak {

class Form;

// Card Status: the card's kind and picture, the gauges, the LEDs, the switch and its tip.
QWidget* buildFrmStatusView(Form& form);
// The large card picture with its zoom and print menus.
QWidget* buildImCardPinoutView(Form& form);
// Card Memory: the production record, the counters and the table of repairs.
QWidget* buildFrmMemCardView(Form& form);

} // namespace velmorak
