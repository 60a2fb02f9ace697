#pragma once

#include <cstdint>
#include <vector>

#include "QelColorArray.h"
#include "QelDataEnums.h"
#include "QelDataExport.h"
#include "QelVarArray.h"

// A 2.5D height map: Width() x Height() samples of one QelDataType in
// row-major order, with per-axis resolution and offset, an optional colour
// per sample and an optional parameter list (camera model, Type() 1).
//
// A sample is invalid when it equals its type's marker: 0 for 8U and 16U,
// the type's minimum for 8S, 16S and 32S, -FLT_MAX for 32F, -DBL_MAX for 64F.
// Heights are (sample - OffsetZ) * ResolutionZ for integer types and the
// sample itself for 32F and 64F. Copies are deep.
class QEL_DATA_API QelRangeImage {
public:
    QelRangeImage() = default;

    int Width() const { return width_; }
    int Height() const { return height_; }
    int Type() const { return type_; }
    QelDataType DataType() const { return static_cast<QelDataType>(dataType_); }
    unsigned char* Data();
    const unsigned char* Data() const;

    double ResolutionX() const { return resolution_[0]; }
    double ResolutionY() const { return resolution_[1]; }
    double ResolutionZ() const { return resolution_[2]; }
    double OffsetX() const { return offset_[0]; }
    double OffsetY() const { return offset_[1]; }
    double OffsetZ() const { return offset_[2]; }

    // True when there is one colour per sample.
    bool IsValidColor() const;
    int ColorChannels() const { return colors_.Channel(); }
    unsigned char* ColorData();
    const unsigned char* ColorData() const;
    QelColorArray DeepCopyColors() const { return colors_; }
    QelVarArray DeepCopyParas() const { return params_; }
    QelRangeImage DeepCopy() const { return *this; }

    // Allocates width x height samples, all invalid, and drops the colours.
    // False (and unchanged) for negative sizes, an unknown data type or a
    // size beyond 2^31 - 1 samples.
    bool SetSize(int width, int height, int dataType);
    void SetType(int type) { type_ = type; }
    void SetInfo(double resolutionX, double resolutionY, double resolutionZ, double offsetX,
                 double offsetY, double offsetZ);
    void SetInfo(const QelVarArray& params) { params_ = params; }

    // Writes count samples of the image's own type, starting at (startCol,
    // startRow) and running on in row-major order. Each valid sample becomes
    // sample * scale + offset (rounded and clamped for integer types); markers
    // stay markers. False (and unchanged) when the samples do not fit.
    bool SetValue(const void* samples, int count, double scale, double offset, int startCol,
                  int startRow);
    // Allocates zeroed colours of 1, 3 or 4 channels for a width x height grid.
    bool SetColorSize(int width, int height, int channels);
    // Writes count colours of the given channel count (which must match the
    // allocated one) from (startCol, startRow) on.
    bool SetColorValue(const void* colors, int count, int channels, int startCol, int startRow);

    // Reads a range image file (see Qel3DFileOperation). Heights become
    // (sample - offset) * scale: scale and offset are stored as ResolutionZ
    // and OffsetZ. False (and unchanged) on failure.
    bool Load(const wchar_t* path, double scale, double offset);

    // Bytes per sample of a data type, 0 for an unknown type.
    static int SampleSize(int dataType);

private:
    int width_ = 0;
    int height_ = 0;
    int type_ = 0;
    int dataType_ = QEL_16U;
    double resolution_[3] = {1.0, 1.0, 1.0};
    double offset_[3] = {0.0, 0.0, 0.0};
    std::vector<std::uint8_t> samples_;
    QelColorArray colors_;
    int colorWidth_ = 0;
    int colorHeight_ = 0;
    QelVarArray params_;
};
