#pragma once

#include <QString>

namespace MenuEntry {

// Whether a menu or autostart entry starts the client of this directory, of which the canonical
// path is given. A second installation in another directory keeps its entries.
bool starts(const QString &entry, const QString &directory);

} // namespace MenuEntry
