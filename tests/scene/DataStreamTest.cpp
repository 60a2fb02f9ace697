// A range image streamed band by band: the band rules, which pixels become
// vertices, normals and triangles against the same image displayed whole,
// finishing, colours and render modes.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdint>
#include <osg/PolygonMode>
#include <vector>

#include "OSGDataStream.h"
#include "OSGRangeImage.h"

namespace {

constexpr int kWidth = 8, kHeight = 20;

// A sloped surface: sample (r, c) = 100 + 3 r + 2 c, with 0 (invalid) at
// (4, 3) and 5000 (above zMax) at (6, 5).
std::vector<std::uint16_t> samples16() {
    std::vector<std::uint16_t> s(kWidth * kHeight);
    for (int r = 0; r < kHeight; ++r)
        for (int c = 0; c < kWidth; ++c)
            s[size_t(r * kWidth + c)] = std::uint16_t(100 + 3 * r + 2 * c);
    s[4 * kWidth + 3] = 0;
    s[6 * kWidth + 5] = 5000;
    return s;
}

QelRangeImageParameter parameter(int dataType = QEL_16U, int step = 1, int channels = 1) {
    QelRangeImageParameter p;
    p.dataType = dataType;
    p.width = kWidth;
    p.height = kHeight;
    p.rowStep = p.columnStep = step;
    p.resolutionX = 0.5;
    p.resolutionY = 0.25;
    p.resolutionZ = 0.01;
    p.offsetZ = 100;
    p.zMin = -10;
    p.zMax = 10;
    p.colourChannels = channels;
    return p;
}

struct Stream {
    OSGDataStream object;
    std::vector<unsigned char> colours;
    explicit Stream(const QelRangeImageParameter& p)
        : object(p, RenderMode::Faces, 1),
          colours(size_t(kWidth * kHeight * p.colourChannels), 200) {
        EXPECT_EQ(object.initialize(), 0);
    }
    template <typename T>
    long append(const std::vector<T>& s, int start, int end, int type = QEL_16U) {
        return object.append(
            s.data() + start * kWidth,
            colours.data() + start * kWidth * object.stream().parameter().colourChannels, type,
            start, end);
    }
};

}  // namespace

TEST(DataStream, BandsComeInOrderAndARefusedBandChangesNothing) {
    Stream s(parameter());
    const auto data = samples16();
    ASSERT_EQ(s.append(data, 0, 10), 0);
    const size_t vertices = s.object.vertexArray()->size();
    EXPECT_EQ(s.append(data, 5, 15), 11200006) << "overlapping the last band";
    EXPECT_EQ(s.append(data, 10, kHeight + 1), 11200007);
    EXPECT_EQ(s.append(data, -1, 5), 11200006);
    EXPECT_EQ(s.object.vertexArray()->size(), vertices);
    EXPECT_EQ(s.object.stream().getCurHeight(), 10);
    ASSERT_EQ(s.append(data, 10, kHeight), 0);
    QelRangeImage result;
    s.object.stream().finish(&result);
    EXPECT_EQ(s.append(data, kHeight, kHeight), 11501015) << "after finish";
}

TEST(DataStream, VerticesNormalsAndTrianglesMatchTheImageDisplayedWhole) {
    const auto data = samples16();
    Stream s(parameter());
    for (int start = 0; start < kHeight; start += 3)
        ASSERT_EQ(s.append(data, start, std::min(kHeight, start + 3)), 0);
    // Invalid and out-of-range pixels make no vertex.
    EXPECT_EQ(s.object.vertexArray()->size(), size_t(kWidth * kHeight - 2));

    // The same image, heights limited the same way, displayed whole.
    QelRangeImage whole;
    whole.SetSize(kWidth, kHeight, QEL_16U);
    std::vector<std::uint16_t> limited = data;
    limited[6 * kWidth + 5] = 0;
    std::memcpy(whole.Data(), limited.data(), limited.size() * 2);
    whole.SetInfo(0.5, 0.25, 0.01, 0, 0, 100);
    OSGRangeImage displayed(whole, RenderMode::Faces, 2, 1, true);
    ASSERT_EQ(displayed.vertexArray()->size(), s.object.vertexArray()->size());
    for (size_t i = 0; i < displayed.vertexArray()->size(); ++i)
        ASSERT_LT(((*displayed.vertexArray())[i] - (*s.object.vertexArray())[i]).length(), 1e-5)
            << i;
    const osg::Geometry* g = displayed.levelGeometry(0);
    const auto* normals = static_cast<const osg::Vec3Array*>(g->getNormalArray());
    const auto* streamNormals =
        static_cast<const osg::Vec3Array*>(s.object.geometry()->getNormalArray());
    ASSERT_GE(normals->size(), streamNormals->size());
    for (size_t i = 0; i < streamNormals->size(); ++i)
        ASSERT_LT(((*normals)[i] - (*streamNormals)[i]).length(), 1e-5) << i;
    const auto* triangles =
        static_cast<const osg::DrawElementsUInt*>(s.object.geometry()->getPrimitiveSet(0));
    const auto* wholeTriangles = dynamic_cast<const osg::DrawElementsUInt*>(g->getPrimitiveSet(0));
    ASSERT_NE(wholeTriangles, nullptr);
    EXPECT_EQ(triangles->asVector(), wholeTriangles->asVector());
}

TEST(DataStream, RowStepsSkipRowsAndColumns) {
    Stream s(parameter(QEL_16U, 2));
    const auto data = samples16();
    ASSERT_EQ(s.append(data, 0, kHeight), 0);
    // Rows 0, 2, ..., columns 0, 2, 4, 6; pixel (6, 5) is on an odd column,
    // (4, 3) too: every sampled pixel is valid.
    EXPECT_EQ(s.object.vertexArray()->size(), size_t((kHeight / 2) * (kWidth / 2)));
    for (const osg::Vec3& v : *s.object.vertexArray())
        EXPECT_EQ(std::fmod(v.x() / 0.25f, 2.0f), 0.0f) << "an odd row made a vertex";
}

TEST(DataStream, FinishClearsHeightsOutsideTheRangeOnceAndKeepsMissingLinesInvalid) {
    const auto data = samples16();
    Stream s(parameter());
    ASSERT_EQ(s.append(data, 0, 10), 0);
    QelRangeImage early, again;
    s.object.stream().finish(&early);
    s.object.stream().finish(&again);
    ASSERT_EQ(early.Height(), kHeight);
    const auto* out = reinterpret_cast<const std::uint16_t*>(early.Data());
    EXPECT_EQ(out[6 * kWidth + 5], 0) << "above zMax becomes the marker";
    EXPECT_EQ(out[2 * kWidth + 2], data[2 * kWidth + 2]);
    EXPECT_EQ(out[15 * kWidth + 2], 0) << "a line never received";
    EXPECT_EQ(early.ResolutionZ(), 0.01);
    EXPECT_EQ(std::memcmp(early.Data(), again.Data(), size_t(kWidth * kHeight * 2)), 0);

    // 32-bit samples: the marker is the lowest int.
    std::vector<std::int32_t> wide(data.begin(), data.end());
    wide[6 * kWidth + 5] = -70000;
    Stream s32(parameter(QEL_32S));
    ASSERT_EQ(s32.append(wide, 0, kHeight, QEL_32S), 0);
    QelRangeImage finished;
    s32.object.stream().finish(&finished);
    EXPECT_EQ(reinterpret_cast<const std::int32_t*>(finished.Data())[6 * kWidth + 5], INT_MIN);
}

TEST(DataStream, ColoursOfOneThreeAndFourChannels) {
    const auto data = samples16();
    for (int channels : {1, 3, 4}) {
        Stream s(parameter(QEL_16U, 1, channels));
        for (size_t i = 0; i < s.colours.size(); ++i)
            s.colours[i] = static_cast<unsigned char>(51 * (i % size_t(channels) + 1));
        ASSERT_EQ(s.append(data, 0, 2), 0);
        const osg::Vec4 c = s.object.colorArray()->front();
        EXPECT_NEAR(c.r(), 0.2f, 1e-6) << channels;
        EXPECT_NEAR(c.g(), channels == 1 ? 0.2f : 0.4f, 1e-6) << channels;
        EXPECT_NEAR(c.a(), channels == 4 ? 0.8f : 1.0f, 1e-6) << channels;
        EXPECT_EQ(s.object.colorArray()->size(), s.object.vertexArray()->size());
    }
}

TEST(DataStream, RenderModesSwitchPrimitives) {
    Stream s(parameter());
    ASSERT_EQ(s.append(samples16(), 0, kHeight), 0);
    osg::Geometry* g = s.object.geometry();
    EXPECT_EQ(g->getPrimitiveSet(0)->getMode(), GLenum(GL_TRIANGLES));
    s.object.setRenderMode(RenderMode::Points);
    EXPECT_EQ(g->getPrimitiveSet(0)->getMode(), GLenum(GL_POINTS));
    EXPECT_EQ(static_cast<osg::DrawArrays*>(g->getPrimitiveSet(0))->getCount(),
              GLsizei(s.object.vertexArray()->size()));
    s.object.setRenderMode(RenderMode::Wireframe);
    EXPECT_EQ(g->getPrimitiveSet(0)->getMode(), GLenum(GL_TRIANGLES));
    const auto* mode = dynamic_cast<const osg::PolygonMode*>(
        g->getStateSet()->getAttribute(osg::StateAttribute::POLYGONMODE));
    ASSERT_NE(mode, nullptr);
    EXPECT_EQ(mode->getMode(osg::PolygonMode::FRONT_AND_BACK), osg::PolygonMode::LINE);
}
