#pragma once

#include <QObject>
#include <memory>
#include <osg/Group>
#include <vector>

#include "OSGData.h"

// The render objects of one view, in insertion order, owned here, with the
// group node their nodes hang under. Ids come from the objects themselves.
// The caller holds the view's scene lock around every change.
class OSGDataManager : public QObject {
    Q_OBJECT
public:
    OSGDataManager();
    ~OSGDataManager() override;

    osg::Group* group() const { return group_.get(); }

    // Takes ownership; an object already listed is not added twice.
    void add(std::unique_ptr<OSGData> object);
    OSGData* find(ObjectId id) const;
    bool remove(ObjectId id);
    // Every object of the kind; either range-image kind removes both.
    void removeKind(ObjectKind kind);
    void removeRangeImages();
    void clear();
    int count() const { return static_cast<int>(objects_.size()); }
    OSGData* at(int index) const;
    void setModeForAll(RenderMode mode);
    // The switch of the default colouring: height colours or the data's own.
    void setSwitchForAll(bool useHeightColours);

signals:
    void sig_dataIsEmpty();

private:
    // Detaches and deletes the objects matching the predicate.
    template <typename Pred>
    void removeIf(Pred pred);

    std::vector<std::unique_ptr<OSGData>> objects_;
    osg::ref_ptr<osg::Group> group_;
};
