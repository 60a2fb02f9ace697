// The registry of render objects: ownership, lookup and removal by id, kind
// or all at once, and the scene group that follows it.
#include <gtest/gtest.h>

#include "OSGDataManager.h"
#include "OSGPointCloud.h"

namespace {

// A render object of any kind that records what the registry asks of it.
class FakeObject : public OSGData {
public:
    FakeObject(ObjectId id, ObjectKind kind, int* deleted)
        : OSGData(id, kind, true), deleted_(deleted) {}
    ~FakeObject() override { ++*deleted_; }
    void setRenderMode(RenderMode mode) override { renderMode_ = mode; }

private:
    int* deleted_;
};

}  // namespace

TEST(DataManager, RemovesByIdKindAndAll) {
    int deleted = 0;
    OSGDataManager registry;
    int emptied = 0;
    QObject::connect(&registry, &OSGDataManager::sig_dataIsEmpty, [&] { ++emptied; });
    for (ObjectKind kind :
         {ObjectKind::PointCloud, ObjectKind::TriangleMesh, ObjectKind::RangeImage,
          ObjectKind::RangeImageStream, ObjectKind::PointCloud})
        registry.add(std::make_unique<FakeObject>(
            10 + static_cast<int>(kind) * 10 + registry.count(), kind, &deleted));
    ASSERT_EQ(registry.count(), 5);
    EXPECT_EQ(registry.group()->getNumChildren(), 5u);

    OSGData* first = registry.at(0);
    EXPECT_EQ(registry.find(first->id()), first);
    EXPECT_EQ(registry.at(5), nullptr);
    EXPECT_FALSE(registry.remove(999));
    EXPECT_EQ(deleted, 0);

    registry.setModeForAll(RenderMode::Faces);
    EXPECT_EQ(registry.at(3)->renderMode(), RenderMode::Faces);

    registry.removeRangeImages();
    EXPECT_EQ(registry.count(), 3);
    EXPECT_EQ(deleted, 2);
    registry.removeKind(ObjectKind::PointCloud);
    EXPECT_EQ(registry.count(), 1);
    EXPECT_EQ(registry.at(0)->kind(), ObjectKind::TriangleMesh);
    EXPECT_EQ(registry.group()->getNumChildren(), 1u);
    registry.removeKind(ObjectKind::PointCloud);  // none left: nothing happens
    EXPECT_EQ(registry.count(), 1);
    EXPECT_EQ(emptied, 0);
    EXPECT_TRUE(registry.remove(registry.at(0)->id()));
    EXPECT_EQ(emptied, 1);
    EXPECT_EQ(deleted, 5);
    EXPECT_EQ(registry.group()->getNumChildren(), 0u);
}

TEST(DataManager, SameObjectListedOnceAndDestroyedWithTheRegistry) {
    int deleted = 0;
    {
        OSGDataManager registry;
        auto object = std::make_unique<FakeObject>(1, ObjectKind::PointCloud, &deleted);
        FakeObject* raw = object.get();
        registry.add(std::move(object));
        registry.add(std::unique_ptr<OSGData>(raw));  // the same object again
        EXPECT_EQ(registry.count(), 1);
        registry.add(std::make_unique<FakeObject>(2, ObjectKind::TriangleMesh, &deleted));
    }
    EXPECT_EQ(deleted, 2);
}
