#pragma once

class QObject;

// From now on, as long as the owner lives, the texts that Qt itself shows in the folder dialog
// follow the interface language: Qt's own translations where it has the language, else the
// program's. They have one pair of translators, so that no language shines through another's gaps.
void translateQtTexts(QObject *owner);
