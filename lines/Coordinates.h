#pragma once

#include <QString>

// Degrees; zero where the server gives none.
struct Coordinates {
    double lon = 0;
    double lat = 0;
};

// Reads a server's "srv_location": a text that holds a JSON object with "lon" and "lat", numbers or
// numbers as text. Its quotes may be escaped once more than JSON asks for. Zero when it is no JSON.
Coordinates coordinatesOf(QString location);
