#pragma once
#include <QIcon>
#include <QImage>

// The library's icons and bitmaps by number (fenklib/resources/ImageIds.h). They are drawn at
// run time, so no image file travels with the library. An unknown number gives a null icon or
// a null image. FenkIcon needs a QGuiApplication (icons are pixmaps); FenkBitmap does not.
QIcon FenkIcon(unsigned id);
QImage FenkBitmap(unsigned id);
