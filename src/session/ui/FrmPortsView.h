#pragma once

class QWidget;

namespace velmorak {

class Form;

// The drawing of the port picker: the list of devices, the COM number and path, Bind, Close.
QWidget* buildFrmPortsView(Form& form);

} // namespace velmorak
