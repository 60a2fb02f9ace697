// GLViewer's streamed range images: a stream is a render object of kind 4
// in the registry; bands are appended under the scene lock.
#include <QCoreApplication>
#include <QTimer>
#include <algorithm>

#include "GLViewer.h"
#include "MemoryBudget.h"
#include "OSGDataManager.h"
#include "OSGDataStream.h"
#include "ObjectIdCounter.h"
#include "QelOSGWidget.h"
#include "SamplingStep.h"
#include "SceneLockGuard.h"
#include "StatusCodes.h"

long GLViewer::initialRangeImage(QelRangeImageParameter parameter) {
    clearScene();
    // A step the host set holds for streams too (one that leaves no column
    // refuses every band); otherwise the stream's own automatic steps.
    if (samplingStep_ > 0)
        parameter.rowStep = parameter.columnStep = samplingStep_;
    else
        SamplingStep::forStream(parameter.width, parameter.height, &parameter.rowStep,
                                &parameter.columnStep);
    const int step = std::min(parameter.rowStep, parameter.columnStep);
    if (!MemoryBudget::fits(MemoryBudget::rangeImage(
            std::uint64_t(parameter.width), std::uint64_t(parameter.height),
            QelRangeImage::SampleSize(parameter.dataType), parameter.colourChannels, step)))
        return QelStatus::kCountTooLarge;
    const long id = ObjectIdCounter::take();
    auto stream = std::make_unique<OSGDataStream>(parameter, defaultMode_, static_cast<int>(id));
    if (long status = stream->initialize()) return status;
    {
        SceneLockGuard lock(osgWidget_);
        registry_->add(std::move(stream));
    }
    setInfoText({QStringLiteral("  ") +
                 QCoreApplication::translate("GLViewer", "Data Type: Range Image Scanning")});
    if (initialised_ && !manipulator_) installManipulator();
    dataChanged();
    return id;
}

// A frame draws the whole scan so far, so a scanner's bands would each pay
// for one: bands ask for at most one redraw every 100 ms, and the last band
// of a burst is drawn when the interval has passed.
void GLViewer::requestStreamRedraw() {
    constexpr int kIntervalMs = 100;
    if (!streamRedrawClock_.isValid() || streamRedrawClock_.elapsed() >= kIntervalMs) {
        streamRedrawClock_.start();
        dataChanged();
        return;
    }
    if (streamRedrawPending_) return;
    streamRedrawPending_ = true;
    QTimer::singleShot(kIntervalMs - int(streamRedrawClock_.elapsed()), this, [this] {
        streamRedrawPending_ = false;
        streamRedrawClock_.start();
        dataChanged();
    });
}

OSGDataStream* GLViewer::findStream(long id) const {
    OSGData* object = id >= 0 ? registry_->find(static_cast<int>(id)) : nullptr;
    return object && object->kind() == OSGData::RangeImageStream
               ? static_cast<OSGDataStream*>(object)
               : nullptr;
}

long GLViewer::appendDataStream(long id, const void* samples, const void* colours, int type,
                                int startLine, int endLine) {
    long status = QelStatus::kObjectNotFound;
    bool first = false;
    osg::BoundingSphere bound;
    {
        SceneLockGuard lock(osgWidget_);
        OSGDataStream* stream = findStream(id);
        if (!stream) return QelStatus::kObjectNotFound;
        if (type != stream->stream().parameter().dataType) return QelStatus::argument(5);
        const bool empty = stream->vertexArray()->empty();
        status = stream->append(samples, colours, type, startLine, endLine);
        first = status == 0 && empty && !stream->vertexArray()->empty();
        if (first) bound = stream->node()->getBound();
    }
    if (status != 0) return status;
    // The first lines of a scan: show them when the camera does not.
    if (first && manipulator_) fitIfOutOfView(bound);
    requestStreamRedraw();
    return QelStatus::kOk;
}

long GLViewer::finishDataStream(long id, QelRangeImage* image) {
    SceneLockGuard lock(osgWidget_);
    OSGDataStream* stream = findStream(id);
    if (!stream) return QelStatus::kObjectNotFound;
    stream->stream().finish(image);
    return QelStatus::kOk;
}
