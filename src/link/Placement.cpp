#include "link/Placement.h"

#include "forms/Form.h"
#include "link/ValueHelpers.h"
#include "platform/Settings.h"

namespace velmorak {

void placeFromLayout(Form& f, const Settings& settings, const QRect& screen,
                     const QString& section) {
    const QString layout = settings.get(section, QStringLiteral("Layout"));
    const int comma = int(layout.indexOf(u','));
    if (comma <= 0) return;
    const int x = int(Val(layout.left(comma)));
    const int y = int(Val(layout.mid(comma + 1)));
    f.move(qBound(screen.left(), x, screen.right() - f.width() / 2),
           qBound(screen.top(), y, screen.bottom() - f.height() / 2));
}

} // namespace velmorak
