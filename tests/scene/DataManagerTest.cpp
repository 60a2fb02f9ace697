// The registry of render objects: ownership, lookup and removal by id, kind
// or all at once, and the scene group that follows it.
#include <gtest/gtest.h>

#include "OSGDataManager.h"
#include "OSGPointCloud.h"

namespace {

// A render object of any kind that records what the registry asks of it.
class FakeObject : public OSGData {
public:
    FakeObject(int id, int kind, int* deleted) : OSGData(id, kind, true), deleted_(deleted) {}
    ~FakeObject() override { ++*deleted_; }
    void setRenderMode(int mode) override { renderMode_ = mode; }

private:
    int* deleted_;
};

}  // namespace

TEST(DataManager, RemovesByIdKindAndAll) {
    int deleted = 0;
    OSGDataManager registry;
    int emptied = 0;
    QObject::connect(&registry, &OSGDataManager::sig_dataIsEmpty, [&] { ++emptied; });
    for (int kind : {1, 3, 2, 4, 1})
        registry.add(
            std::make_unique<FakeObject>(10 + kind * 10 + registry.count(), kind, &deleted));
    ASSERT_EQ(registry.count(), 5);
    EXPECT_EQ(registry.group()->getNumChildren(), 5u);

    OSGData* first = registry.at(0);
    EXPECT_EQ(registry.find(first->id()), first);
    EXPECT_EQ(registry.at(5), nullptr);
    EXPECT_FALSE(registry.remove(999));
    EXPECT_EQ(deleted, 0);

    registry.setModeForAll(4);
    EXPECT_EQ(registry.at(3)->renderMode(), 4);

    registry.removeRangeImages();
    EXPECT_EQ(registry.count(), 3);
    EXPECT_EQ(deleted, 2);
    registry.removeKind(1);
    EXPECT_EQ(registry.count(), 1);
    EXPECT_EQ(registry.at(0)->kind(), 3);
    EXPECT_EQ(registry.group()->getNumChildren(), 1u);
    registry.removeKind(1);  // none left: nothing happens
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
        auto object = std::make_unique<FakeObject>(1, 1, &deleted);
        FakeObject* raw = object.get();
        registry.add(std::move(object));
        registry.add(std::unique_ptr<OSGData>(raw));  // the same object again
        EXPECT_EQ(registry.count(), 1);
        registry.add(std::make_unique<FakeObject>(2, 3, &deleted));
    }
    EXPECT_EQ(deleted, 2);
}
