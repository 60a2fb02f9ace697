#include "PickHandler.h"

bool PickHandler::handle(const osgGA::GUIEventAdapter& ea, osgGA::GUIActionAdapter&) {
    if (!enabled_) return false;
    using E = osgGA::GUIEventAdapter;
    switch (ea.getEventType()) {
        case E::RELEASE:
            if (onClick_) onClick_(ea.getX(), ea.getY());
            return true;
        case E::MOVE:
            if (onMove_) onMove_(ea.getX(), ea.getY());
            return false;
        case E::PUSH:
        case E::DOUBLECLICK:
        case E::DRAG:
        case E::SCROLL:
        case E::KEYDOWN:
        case E::KEYUP:
            return true;
        default:
            return false;
    }
}
