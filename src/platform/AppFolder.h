#pragma once

#include <QString>

namespace velmorak {

// The folder where the tool looks up its database and pictures: the executable's folder when
// it holds the file, else a per-user data folder, seeded with the installed copy (from the
// executable's folder or ../share/velmorak) the first time.
QString applicationFolder(const QString& fileName);

} // namespace velmorak
