// Arithmetic and logic between images and constants.
//
// Whatever costs no more than an addition is compared with one. Products and quotients are rounded rather than
// truncated. Constants are left to the function of that name, although convertTo multiplies faster.
#include "opencv/peers.h"

#include <opencv2/imgproc.hpp>

namespace bench::opencv {

namespace {

const cv::Scalar colorConstant(constant, constant + 1, constant + 2);

void fill(Scene& scene) { greyResult(scene).setTo(constant); }

void fill16(Scene& scene) { grey16Result(scene).setTo(constant); }

void fillColor(Scene& scene) { colorResult(scene).setTo(colorConstant); }

void copy(Scene& scene) { grey(scene).copyTo(greyResult(scene)); }

void copyColor(Scene& scene) { color(scene).copyTo(colorResult(scene)); }

void invert(Scene& scene) { cv::bitwise_not(grey(scene), greyResult(scene)); }

void greyToColor(Scene& scene) { cv::cvtColor(grey(scene), colorResult(scene), cv::COLOR_GRAY2BGR); }

void add(Scene& scene) { cv::add(grey(scene), greyReference(scene), greyResult(scene)); }

void average(Scene& scene) { cv::addWeighted(grey(scene), 0.5, greyReference(scene), 0.5, 0, greyResult(scene)); }

void difference(Scene& scene)
{
    cv::addWeighted(grey(scene), 0.5, greyReference(scene), -0.5, 127.5, greyResult(scene));
}

void multiply(Scene& scene) { cv::multiply(grey(scene), greyReference(scene), greyResult(scene)); }

void scaledMultiply(Scene& scene) { cv::multiply(grey(scene), greyReference(scene), greyResult(scene), 1.0 / 256); }

void divide(Scene& scene) { cv::divide(grey(scene), greyReference(scene), greyResult(scene)); }

void scaledDivide(Scene& scene) { cv::divide(grey(scene), greyReference(scene), greyResult(scene), 256); }

void addConstant(Scene& scene) { cv::add(grey(scene), cv::Scalar(constant), greyResult(scene)); }

void averageConstant(Scene& scene) { grey(scene).convertTo(greyResult(scene), CV_8U, 0.5, 0.5 * constant); }

void differenceConstant(Scene& scene) { grey(scene).convertTo(greyResult(scene), CV_8U, 0.5, 127.5 - 0.5 * constant); }

void multiplyConstant(Scene& scene) { cv::multiply(grey(scene), cv::Scalar(constant), greyResult(scene)); }

void scaledMultiplyConstant(Scene& scene)
{
    cv::multiply(grey(scene), cv::Scalar(constant), greyResult(scene), 1.0 / 256);
}

void divideConstant(Scene& scene) { cv::divide(grey(scene), cv::Scalar(constant), greyResult(scene)); }

void scaledDivideConstant(Scene& scene) { cv::divide(grey(scene), cv::Scalar(constant), greyResult(scene), 256); }

void divideIntoConstant(Scene& scene) { cv::divide(double(high), grey(scene), greyResult(scene)); }

void addColor(Scene& scene) { cv::add(color(scene), colorReference(scene), colorResult(scene)); }

void multiplyColor(Scene& scene) { cv::multiply(color(scene), colorReference(scene), colorResult(scene)); }

void divideColor(Scene& scene) { cv::divide(color(scene), colorReference(scene), colorResult(scene)); }

void averageColor(Scene& scene)
{
    cv::addWeighted(color(scene), 0.5, colorReference(scene), 0.5, 0, colorResult(scene));
}

void addConstantColor(Scene& scene) { cv::add(color(scene), colorConstant, colorResult(scene)); }

void multiplyConstantColor(Scene& scene) { cv::multiply(color(scene), colorConstant, colorResult(scene)); }

// Images made 16 bits wide first: faster than arithmetic between depths.
cv::Mat wideGrey(Scene& scene)
{
    cv::Mat wide = grey16Result(scene);
    grey(scene).convertTo(wide, CV_16U);
    return wide;
}

const cv::Mat& wideReference(Scene& scene)
{
    static cv::Mat wide;
    greyReference(scene).convertTo(wide, CV_16U);
    return wide;
}

void addTo16(Scene& scene)
{
    const cv::Mat result = wideGrey(scene);
    cv::add(result, wideReference(scene), result);
}

void multiplyTo16(Scene& scene)
{
    const cv::Mat result = wideGrey(scene);
    cv::multiply(result, wideReference(scene), result);
}

void add16(Scene& scene)
{
    const cv::Mat result = wideGrey(scene);
    cv::add(greySum(scene), result, result);
}

void divide16(Scene& scene)
{
    const cv::Mat result = wideGrey(scene);
    cv::divide(greySum(scene), result, result);
}

constexpr Peer table[] = {
    {"ImgOper", "const to BW8", fill},
    {"ImgOper", "const to BW16", fill16},
    {"ImgOper", "const to C24", fillColor},
    {"ImgOper", "BW8 copy", copy},
    {"ImgOper", "BW8 invert", invert},
    {"ImgOper", "C24 copy", copyColor},
    {"ImgOper", "BW8 to C24 copy", greyToColor},
    {"ImgOper", "BW8 add", add},
    {"ImgOper", "BW8 subtract", add},
    {"ImgOper", "BW8 multiply", multiply},
    {"ImgOper", "BW8 divide", divide},
    {"ImgOper", "BW8 modulo", divide},
    {"ImgOper", "BW8 average", average},
    {"ImgOper", "BW8 difference", difference},
    {"ImgOper", "BW8 scaled multiply", scaledMultiply},
    {"ImgOper", "BW8 scaled divide", scaledDivide},
    {"ImgOper", "BW8 and", add},
    {"ImgOper", "BW8 or", add},
    {"ImgOper", "BW8 xor", add},
    {"ImgOper", "BW8 nand", add},
    {"ImgOper", "BW8 min", add},
    {"ImgOper", "BW8 max", add},
    {"ImgOper", "BW8 copy where 0", add},
    {"ImgOper", "BW8 copy where not 0", add},
    {"ImgOper", "BW8 equal", add},
    {"ImgOper", "BW8 greater or equal", add},
    {"ImgOper", "BW8 greater", add},
    {"ImgOper", "BW8 const add", addConstant},
    {"ImgOper", "BW8 const subtract", addConstant},
    {"ImgOper", "BW8 const multiply", multiplyConstant},
    {"ImgOper", "BW8 const divide", divideConstant},
    {"ImgOper", "BW8 const modulo", divideConstant},
    {"ImgOper", "BW8 const shift left", addConstant},
    {"ImgOper", "BW8 const shift right", addConstant},
    {"ImgOper", "BW8 const average", averageConstant},
    {"ImgOper", "BW8 const difference", differenceConstant},
    {"ImgOper", "BW8 const scaled multiply", scaledMultiplyConstant},
    {"ImgOper", "BW8 const scaled divide", scaledDivideConstant},
    {"ImgOper", "BW8 const and", addConstant},
    {"ImgOper", "BW8 const or", addConstant},
    {"ImgOper", "BW8 const xor", addConstant},
    {"ImgOper", "BW8 const min", addConstant},
    {"ImgOper", "BW8 const max", addConstant},
    {"ImgOper", "BW8 const copy where 0", addConstant},
    {"ImgOper", "BW8 const copy where not 0", addConstant},
    {"ImgOper", "BW8 const equal", addConstant},
    {"ImgOper", "BW8 const greater or equal", addConstant},
    {"ImgOper", "BW8 const greater", addConstant},
    {"ImgOper", "const BW8 subtract", addConstant},
    {"ImgOper", "const BW8 divide", divideIntoConstant},
    {"ImgOper", "C24 add", addColor},
    {"ImgOper", "C24 multiply", multiplyColor},
    {"ImgOper", "C24 divide", divideColor},
    {"ImgOper", "C24 average", averageColor},
    {"ImgOper", "C24 const add", addConstantColor},
    {"ImgOper", "C24 const multiply", multiplyConstantColor},
    {"ImgOper", "BW8 C24 add", addColor},
    {"ImgOper", "BW8 to BW16 add", addTo16},
    {"ImgOper", "BW8 to BW16 multiply", multiplyTo16},
    {"ImgOper", "BW16 BW8 add", add16},
    {"ImgOper", "BW16 BW8 divide", divide16},
    {"ImgOper123", "BW8 add", add},
    {"ImgOper123", "BW8 multiply", multiply},
    {"ImgOper123", "BW8 divide", divide},
};

}  // namespace

std::span<const Peer> arithmeticPeers() { return table; }

}  // namespace bench::opencv
