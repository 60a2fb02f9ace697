// Exported functions: streaming a range image line by line.
#include <cmath>

#include "ExceptionStatus.h"
#include "GLViewer.h"
#include "ModeNumbers.h"
#include "Qel3DGraphics.h"
#include "QelDataEnums.h"
#include "SceneContent.h"
#include "StatusCodes.h"
#include "WindowRegistry.h"

namespace QELMV {

long QelInitialRangeImage(long long window, int dataType, int width, int height, double resolutionX,
                          double offsetX, double resolutionY, double offsetY, double resolutionZ,
                          double offsetZ, double zMin, double zMax, int colourChannels) try {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    if (static_cast<unsigned int>(colourChannels - 1) > 3) return QelStatus::argument(13);
    if (dataType != QEL_16U && dataType != QEL_32S) return QelStatus::argument(2);
    if (width < 1) return QelStatus::argument(3);
    if (height < 1) return QelStatus::argument(4);
    if (static_cast<long long>(width) * height > 2147483647LL) return QelStatus::kCountTooLarge;
    const double mapping[] = {resolutionX, offsetX, resolutionY, offsetY, resolutionZ, offsetZ};
    for (int i = 0; i < 6; ++i)
        if (!std::isfinite(mapping[i])) return QelStatus::argument(5 + i);
    if (std::isnan(zMin)) return QelStatus::argument(11);
    if (std::isnan(zMax) || zMin > zMax) return QelStatus::argument(12);
    // Steps are the view's to choose.
    const QelRangeImageParameter p{
        dataType,    width,   height,      1,       1,    resolutionX, offsetX,
        resolutionY, offsetY, resolutionZ, offsetZ, zMin, zMax,        colourChannels};
    return v->initialRangeImage(p);
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelAppendDataStream(long long window, long stream, void* samples, void* colours, int type,
                         int startLine, int endLine) try {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    if (startLine < 0) return QelStatus::argument(6);
    if (startLine > endLine) return QelStatus::argument(7);
    if (!samples) return QelStatus::argument(3);
    if (!colours) return QelStatus::kStreamBufferMissing;
    return v->appendDataStream(stream, samples, colours, type, startLine, endLine);
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelFinishDataStream(long long window, long stream, QelRangeImage* image) try {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    return v->finishDataStream(stream, image);
} catch (...) {
    return QelStatus::ofCurrentException();
}

}  // namespace QELMV
