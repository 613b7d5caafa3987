#include "fenklib/frame/CFenkBaseWnd.h"

void PublishFenkIdle(QWidget* window, bool busy) {
    window->setProperty("fenkBusy", busy);
    QWidget* top = window->window();
    bool anyBusy = top->property("fenkBusy").toBool();
    for (const QWidget* w : top->findChildren<QWidget*>()) anyBusy = anyBusy || w->property("fenkBusy").toBool();
    top->setProperty("fenkIdle", !anyBusy);
    if (top != window) window->setProperty("fenkIdle", !busy);
}
