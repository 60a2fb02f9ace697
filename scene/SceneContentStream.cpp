// The content's streamed range images: a stream is a render object in the
// registry; bands are appended under the scene lock.
#include <QCoreApplication>
#include <algorithm>

#include "MemoryBudget.h"
#include "OSGDataManager.h"
#include "OSGDataStream.h"
#include "ObjectIdCounter.h"
#include "SamplingStep.h"
#include "SceneContent.h"
#include "SceneLockGuard.h"
#include "StatusCodes.h"

long SceneContent::initialRangeImage(QelRangeImageParameter parameter) {
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
    const ObjectId id = ObjectIdCounter::take();
    auto stream = std::make_unique<OSGDataStream>(parameter, defaultMode_, id);
    if (long status = stream->initialize()) return status;
    {
        SceneLockGuard lock(lock_);
        registry_->add(std::move(stream));
    }
    setInfoText({QStringLiteral("  ") +
                 QCoreApplication::translate("SceneContent", "Data Type: Range Image Scanning")});
    emit sig_itemAdded(osg::BoundingSphere());
    emit sig_dataChanged();
    return id;
}

OSGDataStream* SceneContent::findStream(ObjectId id) const {
    OSGData* object = id >= 0 ? registry_->find(id) : nullptr;
    return object && object->kind() == ObjectKind::RangeImageStream
               ? static_cast<OSGDataStream*>(object)
               : nullptr;
}

long SceneContent::appendDataStream(ObjectId id, const void* samples, const void* colours, int type,
                                    int startLine, int endLine) {
    long status = QelStatus::kObjectNotFound;
    bool first = false;
    osg::BoundingSphere bound;
    {
        SceneLockGuard lock(lock_);
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
    if (first) emit sig_itemAdded(bound);
    emit sig_streamGrew();
    return QelStatus::kOk;
}

long SceneContent::finishDataStream(ObjectId id, QelRangeImage* image) {
    SceneLockGuard lock(lock_);
    OSGDataStream* stream = findStream(id);
    if (!stream) return QelStatus::kObjectNotFound;
    stream->stream().finish(image);
    return QelStatus::kOk;
}
