#include "lines/Coordinates.h"

#include "lines/TextOrNumber.h"

#include <QJsonDocument>
#include <QJsonObject>

Coordinates coordinatesOf(QString location)
{
    location.remove(QLatin1Char('\\'));
    const QJsonObject object = QJsonDocument::fromJson(location.toUtf8()).object();
    return {textOrNumberToDouble(object.value(QLatin1String("lon"))),
        textOrNumberToDouble(object.value(QLatin1String("lat")))};
}
