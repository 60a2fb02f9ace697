// Range images from image and CSV files, and what the file operation refuses
// before reading: pipes, wrong paths and suffixes, image signatures with
// nothing valid behind them, scales beyond single precision.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cfloat>
#include <cmath>
#include <cstring>
#include <fstream>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include "Qel3DData.h"
#include "TempDir.h"

using QELMV::Qel3DFileOperation;

TEST(RangeImageLoader, ImageDepthsAreKept) {
    TempDir dir;
    cv::Mat u16(3, 4, CV_16U, cv::Scalar(0));
    u16.at<std::uint16_t>(1, 2) = 1234;
    cv::imwrite(dir.file("a.png"), u16);
    cv::Mat f32(2, 2, CV_32F, cv::Scalar(1.5f));
    f32.at<float>(0, 1) = NAN;
    cv::imwrite(dir.file("b.tif"), f32);
    cv::Mat bgr(2, 2, CV_8UC3, cv::Scalar(10, 20, 30));
    cv::imwrite(dir.file("c.bmp"), bgr);

    QelRangeImage img;
    QelVar a = widePath(dir.file("a.png"));
    ASSERT_EQ(Qel3DFileOperation().Load(&img, a, true), 0);
    EXPECT_EQ(img.DataType(), QEL_16U);
    EXPECT_EQ(img.Width(), 4);
    EXPECT_EQ(reinterpret_cast<std::uint16_t*>(img.Data())[1 * 4 + 2], 1234);

    QelVar b = widePath(dir.file("b.tif"));
    ASSERT_EQ(Qel3DFileOperation().Load(&img, b, 0.5, 0.25, 2.0), 0);
    EXPECT_EQ(img.DataType(), QEL_32F);
    EXPECT_EQ(reinterpret_cast<float*>(img.Data())[1], -FLT_MAX) << "NaN becomes the marker";
    EXPECT_DOUBLE_EQ(img.ResolutionY(), 0.25);

    QelVar c = widePath(dir.file("c.bmp"));
    ASSERT_EQ(Qel3DFileOperation().Load(&img, c, true), 0);
    EXPECT_EQ(img.DataType(), QEL_8U);
    EXPECT_EQ(img.Data()[0], 22);  // luminance of (R 30, G 20, B 10)
    ASSERT_TRUE(img.IsValidColor());
    EXPECT_EQ(img.ColorData()[0], 30);

    const std::string png = dir.file("a.png");
    ASSERT_TRUE(img.Load(std::wstring(png.begin(), png.end()).c_str(), 0.01, 100));
    EXPECT_DOUBLE_EQ(img.ResolutionZ(), 0.01);
    EXPECT_DOUBLE_EQ(img.OffsetZ(), 100);
}

TEST(RangeImageLoader, CsvRowsAndFailuresLeaveTargetAlone) {
    TempDir dir;
    QelRangeImage img;
    QelVar csv = widePath(dir.write("h.csv", "1.5,2,3,\n4,,6\n\n7;8;9\n"));
    ASSERT_EQ(Qel3DFileOperation().Load(&img, csv, true), 0);
    ASSERT_EQ(img.Width(), 3);
    ASSERT_EQ(img.Height(), 3);
    EXPECT_FLOAT_EQ(reinterpret_cast<float*>(img.Data())[0], 1.5f);
    EXPECT_EQ(reinterpret_cast<float*>(img.Data())[4], -FLT_MAX);

    for (const char* bad : {"1,2\n3\n", "1,x,3\n", ""}) {
        QelVar p = widePath(dir.write("bad.csv", bad));
        EXPECT_NE(Qel3DFileOperation().Load(&img, p, true), 0) << bad;
        EXPECT_EQ(img.Width(), 3);
    }
    QelVar garbage = widePath(dir.write("g.png", std::string("\x89PNG\r\n\x1a\n garbage", 17)));
    EXPECT_NE(Qel3DFileOperation().Load(&img, garbage, true), 0);
    EXPECT_EQ(img.Height(), 3);

    // The three-resolution form takes only finite, positive resolutions.
    QelVar resolved = widePath(dir.write("r.csv", "1,2\n3,4\n"));
    const double bad[] = {std::nan(""), 0.0, -1.0, INFINITY};
    for (double r : bad) {
        EXPECT_EQ(Qel3DFileOperation().Load(&img, resolved, r, 1.0, 1.0),
                  QELMV::QEL_DATA_INVALID_ARGUMENT);
        EXPECT_EQ(Qel3DFileOperation().Load(&img, resolved, 1.0, 1.0, r),
                  QELMV::QEL_DATA_INVALID_ARGUMENT);
    }
    EXPECT_EQ(img.Height(), 3);
    ASSERT_EQ(Qel3DFileOperation().Load(&img, resolved, 0.5, 0.25, 2.0), 0);
    EXPECT_EQ(img.ResolutionZ(), 2.0);
}

TEST(FileOperation, PipesAndObviouslyWrongFilesAreRefusedWithoutReadingThem) {
    TempDir dir;
    // A named pipe nobody writes to: opening it for reading would block.
    for (const char* name : {"pipe.xyz", "pipe.stl", "pipe.png"}) {
        const std::string fifo = dir.file(name);
        ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
        QelVar p = widePath(fifo);
        QelPointCloud cloud;
        QelTriangleMesh mesh;
        QelRangeImage image;
        // Refused at once: unreadable, or (a mesh from .xyz) not a format of the target.
        for (long status : {Qel3DFileOperation().Load(&cloud, p, true, true),
                            Qel3DFileOperation().Load(&mesh, p, true, true),
                            Qel3DFileOperation().Load(&image, p, true)})
            EXPECT_TRUE(status == QELMV::QEL_DATA_FILE_NOT_READABLE ||
                        status == QELMV::QEL_DATA_FORMAT_UNSUPPORTED)
                << name << " " << status;
    }
    // A sparse 64 GB file of zero bytes: refused from its first bytes (read
    // whole, it could not even be allocated).
    for (const char* name : {"zeros.xyz", "zeros.ply", "zeros.stl", "zeros.obj", "zeros.off",
                             "zeros.pcd", "zeros.csv", "zeros.png"}) {
        const std::string path = dir.file(name);
        std::ofstream(path).close();
        ASSERT_EQ(::truncate(path.c_str(), 64ll << 30), 0);
        QelVar p = widePath(path);
        QelPointCloud cloud;
        QelTriangleMesh mesh;
        QelRangeImage image;
        const std::string suffix = std::string(name).substr(6);
        if (suffix == "csv" || suffix == "png") {
            EXPECT_EQ(Qel3DFileOperation().Load(&image, p, true), QELMV::QEL_DATA_FILE_MALFORMED)
                << name;
        } else {
            const long cloudStatus = Qel3DFileOperation().Load(&cloud, p, true, true);
            const long meshStatus = Qel3DFileOperation().Load(&mesh, p, true, true);
            EXPECT_TRUE(cloudStatus == QELMV::QEL_DATA_FILE_MALFORMED ||
                        cloudStatus == QELMV::QEL_DATA_FORMAT_UNSUPPORTED)
                << name << " " << cloudStatus;
            EXPECT_TRUE(meshStatus == QELMV::QEL_DATA_FILE_MALFORMED ||
                        meshStatus == QELMV::QEL_DATA_FORMAT_UNSUPPORTED)
                << name << " " << meshStatus;
        }
    }
}

TEST(FileOperation, PathsAndSuffixes) {
    TempDir dir;
    QelPointCloud cloud;
    QelVar missing = widePath(dir.file("none.ply"));
    EXPECT_EQ(Qel3DFileOperation().Load(&cloud, missing, true, true),
              QELMV::QEL_DATA_FILE_NOT_READABLE);
    QelVar folder = widePath(dir.file(""));
    QelRangeImage img;
    EXPECT_NE(Qel3DFileOperation().Load(&img, folder, true), 0);
    QelVar unknown = widePath(dir.write("a.abc", "1 2 3\n"));
    EXPECT_EQ(Qel3DFileOperation().Load(&cloud, unknown, true, true),
              QELMV::QEL_DATA_FORMAT_UNSUPPORTED);
    QelVar number(3L);
    EXPECT_NE(Qel3DFileOperation().Load(&cloud, number, true, true), 0);
    EXPECT_NE(Qel3DFileOperation().Load(static_cast<QelPointCloud*>(nullptr), unknown, true, true),
              0);

    // Narrow paths, upper-case suffixes and non-ASCII file names all work.
    const std::string named = dir.write("Punkte-\xc3\xa4.XYZ", "1 2 3\n");
    QelVar narrow(named.c_str());
    EXPECT_EQ(Qel3DFileOperation().Load(&cloud, narrow, true, true), 0);
    QelVar wide(L"");
    const std::string base = dir.file("");
    const std::wstring w = std::wstring(base.begin(), base.end()) + L"Punkte-\u00e4.XYZ";
    wide = QelVar(w.c_str());
    EXPECT_EQ(Qel3DFileOperation().Load(&cloud, wide, true, true), 0);
}

TEST(FileOperation, AnImageSignatureFollowedByNothingValidIsRefusedFromItsHeader) {
    // Each format's signature, then zeros to 64 GB (sparse): its header
    // cannot be right, so the file is refused without being read whole
    // (read whole, it could not even be allocated).
    TempDir dir;
    const std::pair<const char*, std::string> signatures[] = {
        {"zeros.png", std::string("\x89PNG\r\n\x1a\n", 8)},
        {"zeros.tif", std::string("II*\0", 4)},
        {"zeros.tiff", std::string("MM\0*", 4)},
        {"zeros.bmp", "BM"},
        {"zeros.jpg", "\xff\xd8\xff"},
    };
    for (const auto& [name, signature] : signatures) {
        const std::string path = dir.write(name, signature);
        ASSERT_EQ(::truncate(path.c_str(), 64ll << 30), 0);
        QelVar p = widePath(path);
        QelRangeImage image;
        EXPECT_EQ(Qel3DFileOperation().Load(&image, p, true), QELMV::QEL_DATA_FILE_MALFORMED)
            << name;
    }
    // Real files of each format still pass the same check.
    cv::Mat grey(5, 7, CV_8U, cv::Scalar(9));
    for (const char* name : {"ok.png", "ok.tif", "ok.bmp", "ok.jpg"}) {
        ASSERT_TRUE(cv::imwrite(dir.file(name), grey)) << name;
        QelVar p = widePath(dir.file(name));
        QelRangeImage image;
        EXPECT_EQ(Qel3DFileOperation().Load(&image, p, true), 0) << name;
        EXPECT_EQ(image.Width(), 7) << name;
    }
    // A PNG whose IHDR names an impossible image (zero width).
    std::string png("\x89PNG\r\n\x1a\n", 8);
    png += std::string("\0\0\0\x0dIHDR", 8) + std::string(4, '\0') + std::string("\0\0\0\x05", 4) +
           std::string("\x08\0\0\0\0", 5) + std::string(4, '\0');
    QelVar bad = widePath(dir.write("bad.png", png));
    QelRangeImage image;
    EXPECT_EQ(Qel3DFileOperation().Load(&image, bad, true), QELMV::QEL_DATA_FILE_MALFORMED);
}

TEST(RangeImageLoader, ScalesThatLeaveSinglePrecisionAreRefused) {
    // Finite resolutions whose products with a 16-bit range overflow floats,
    // and scales that are not numbers.
    TempDir dir;
    cv::Mat u16(3, 4, CV_16U, cv::Scalar(1000));
    cv::imwrite(dir.file("h.png"), u16);
    QelVar path = widePath(dir.file("h.png"));
    QelRangeImage img;
    for (const double huge : {1e300, 1e40, 1e36}) {
        // Positions reach 4 pixels times the resolution; heights 65535 times.
        if (huge * 4 > FLT_MAX) {
            EXPECT_EQ(Qel3DFileOperation().Load(&img, path, huge, 1.0, 1.0),
                      QELMV::QEL_DATA_INVALID_ARGUMENT)
                << huge;
        }
        EXPECT_EQ(Qel3DFileOperation().Load(&img, path, 1.0, 1.0, huge),
                  QELMV::QEL_DATA_INVALID_ARGUMENT)
            << huge;
    }
    EXPECT_EQ(img.Width(), 0) << "a refused load leaves the target alone";
    EXPECT_EQ(Qel3DFileOperation().Load(&img, path, 1.0, 1.0, 1e30), 0) << "65535e30 fits";

    const std::string png = dir.file("h.png");
    const std::wstring wide(png.begin(), png.end());
    QelRangeImage kept;
    ASSERT_TRUE(kept.Load(wide.c_str(), 0.5, 2));
    for (const auto& [scale, offset] :
         {std::pair(std::nan(""), 0.0), std::pair(double(INFINITY), 0.0),
          std::pair(1.0, std::nan("")), std::pair(1e300, 0.0), std::pair(1.0, -1e300)})
        EXPECT_FALSE(kept.Load(wide.c_str(), scale, offset)) << scale << " " << offset;
    EXPECT_DOUBLE_EQ(kept.ResolutionZ(), 0.5) << "a refused load leaves the image alone";
}
