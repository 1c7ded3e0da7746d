/* rvpcv: computer-vision primitives for x86-64 with AVX2 and FMA.
 *
 * Every function is a plain C function that takes images as descriptors (pointer to the first
 * pixel of the region, row step in bytes, region size), validates all its arguments before it
 * touches a pixel, and returns an RvpStatus. On an error status nothing has been written:
 * outputs, result pointers, state structures and caller buffers are byte-for-byte unchanged.
 *
 * Argument checks run in this order: null pointers (-8, in argument order), region size (-6),
 * steps (-14 for a step below the row's byte width, -108 for a step that is not a multiple of
 * the element size; tested per group of images, row widths computed in 64-bit arithmetic, a
 * negative step is -14), then the family's own parameters.
 *
 * Compiles as C99 and as C++. */
#ifndef RVPCV_H
#define RVPCV_H

#include <stdint.h>

#include "rvpcore.h"

#if defined(RVPCV_BUILD)
#define RVPCV_API __attribute__((visibility("default")))
#else
#define RVPCV_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ============================================================================================
 * Shared types
 * ========================================================================================== */

typedef uint8_t Rvp8u;
typedef int8_t Rvp8s;
typedef uint16_t Rvp16u;
typedef int16_t Rvp16s;
typedef int32_t Rvp32s;
typedef float Rvp32f;
typedef double Rvp64f;

typedef struct {
  int width;
  int height;
} RvpiSize;

typedef struct {
  int x;
  int y;
} RvpiPoint;

typedef struct {
  int x;
  int y;
  int width;
  int height;
} RvpiRect;

/* Border selector: the low four bits are the base rule, the next four mark sides whose
 * neighbours lie in the caller's memory. */
typedef int RvpiBorderType;
enum {
  rvpBorderConst = 0,       /* pixels outside take the border value */
  rvpBorderRepl = 1,        /* the nearest edge pixel is repeated */
  rvpBorderWrap = 2,        /* continues from the opposite end (rows and columns alike) */
  rvpBorderMirror = 3,      /* c b | a b c: mirror without repeating the edge pixel */
  rvpBorderMirrorR = 4,     /* b a | a b c: mirror repeating the edge pixel */
  rvpBorderInMem = 6,       /* all four sides read from the caller's memory */
  rvpBorderInMemTop = 0x10,
  rvpBorderInMemBottom = 0x20,
  rvpBorderInMemLeft = 0x40,
  rvpBorderInMemRight = 0x80
};

/* Data-type selector of size queries and initialisers. */
typedef int RvpDataType;
enum { rvp8u = 1, rvp8s = 3, rvp16u = 5, rvp16s = 7, rvp32f = 13 };

/* Region record written by the flood fills. */
typedef struct {
  Rvp64f area;     /* number of filled pixels */
  Rvp64f value[3]; /* the new value; one-channel fills write it first and 0 in the others */
  RvpiRect rect;   /* bounding box of the filled pixels */
} RvpiConnectedComp;

/* The version record; constant data of the library. */
typedef struct {
  int major;
  int minor;
  int majorBuild;
  int build;
  char targetCpu[4];
  const char* Name;
  const char* Version;
  const char* BuildDate;
} RvpLibraryVersion;

/* ============================================================================================
 * Status codes: 0 success, negative errors, positive warnings (outputs valid).
 * ========================================================================================== */

typedef int RvpStatus;
enum {
  rvpStsNoErr = 0,
  rvpStsDivByZeroWrn = 6,     /* a relative norm had a zero denominator */
  rvpStsHoughLimitWrn = 33,   /* the probabilistic line search stopped early */
  rvpStsErr = -2,             /* a sample count does not fit a signed 32-bit count */
  rvpStsBadArgErr = -5,       /* a scalar argument or option outside its allowed set */
  rvpStsSizeErr = -6,         /* region size below 1 or outside a family's limits */
  rvpStsRangeErr = -7,        /* region accumulation cannot be completed */
  rvpStsNullPtrErr = -8,      /* a pointer argument is null */
  rvpStsMemAllocErr = -9,     /* the core allocator returned no memory */
  rvpStsOutOfRangeErr = -11,  /* a value outside its allowed numeric range */
  rvpStsDataTypeErr = -12,    /* unsupported data-type selector */
  rvpStsStepErr = -14,        /* a row step smaller than the row's width in bytes */
  rvpStsContextMatchErr = -17,/* a specification structure has the wrong identifier */
  rvpStsThresholdErr = -18,   /* a negative threshold */
  rvpStsMaskSizeErr = -33,    /* unsupported kernel or mask size selector */
  rvpStsAnchorErr = -34,      /* anchor outside the kernel */
  rvpStsChannelErr = -47,     /* channel count other than 1 or 3 */
  rvpStsCOIErr = -52,         /* channel of interest outside 1..3 */
  rvpStsNumChannelsErr = -53, /* channel-count argument other than 1 */
  rvpStsMetricErr = -56,      /* distance-transform weight below 1 */
  rvpStsNotEvenStepErr = -108,/* step not a multiple of the element size */
  rvpStsBorderErr = -225,     /* unsupported border type */
  rvpStsModeErr = -229,       /* mode selector other than 1 */
  rvpStsSelectorErr = -230,   /* selector other than 2, 5 or 8 */
  rvpStsInplaceModeErr = -9997/* source equals destination where in-place is unsupported */
};

/* ============================================================================================
 * Library frame
 * ========================================================================================== */

/* The version record of this build: 8.2.3 build 48108, target "l9". Never fails; the record is
 * constant and must be neither modified nor freed. */
RVPCV_API const RvpLibraryVersion* rvpcvGetLibVersion(void);

/* ============================================================================================
 * Accumulation and differences (src/arith/accumulate.cpp)
 *
 * Accumulators are Rvp32f images updated in place; sources are converted exactly to Rvp32f.
 * fma(a, b, c) below is a fused multiply-add with a single rounding; m is 1.0 where the mask
 * byte is nonzero and 0.0 where it is zero. The mask is a multiplication, not a skip: a
 * masked-off pixel keeps its value only when the other factor is finite (a NaN or infinite
 * 32f source writes NaN even where the mask is 0).
 *
 *   Add           d + s                               masked: fma(m, s, d)
 *   AddSquare     fma(s, s, d)                        masked: fma(m, round(s*s), d)
 *   AddProduct    fma(s1, s2, d)                      masked: fma(m, round(s1*s2), d)
 *   AddWeighted   fma(round(s - d), alpha, d)         masked: fma(mask ? alpha : 0, round(s - d), d)
 *   AddWeighted_32f_C1R   dst = fma(round(s1 - s2), alpha, s2)
 *   AbsDiff       |s1 - s2| (8u/16u exact; 32f: rounded difference with its sign bit cleared)
 *   AbsDiffC      |s - value| (value clamped to 0..255 for 8u, 0..65535 for 16u; no error)
 *
 * Results do not depend on alignment, width or step, and are bit-exact, with one freedom: when
 * a result is NaN, which input NaN's payload and sign it carries is not specified (IEEE 754
 * leaves that open). A zero mask byte over an accumulator holding -0.0 gives +0.0, since
 * fma(0, s, -0.0) = +0.0; every other finite accumulator value is kept exactly.
 * alpha is used as given (no range check, no clamping). Images may start at any byte address.
 * Step checks: sources first (-14 then -108), then mask and accumulator (-14 then -108); the
 * all-32f members and AbsDiff/AbsDiffC test every step for -14 first, then every step for -108.
 * ========================================================================================== */

/* Rvp8u sources */
RVPCV_API RvpStatus rvpiAdd_8u32f_C1IR(const Rvp8u* pSrc, int srcStep, Rvp32f* pSrcDst,
    int srcDstStep, RvpiSize roiSize);
RVPCV_API RvpStatus rvpiAdd_8u32f_C1IMR(const Rvp8u* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, Rvp32f* pSrcDst, int srcDstStep, RvpiSize roiSize);
RVPCV_API RvpStatus rvpiAddSquare_8u32f_C1IR(const Rvp8u* pSrc, int srcStep, Rvp32f* pSrcDst,
    int srcDstStep, RvpiSize roiSize);
RVPCV_API RvpStatus rvpiAddSquare_8u32f_C1IMR(const Rvp8u* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, Rvp32f* pSrcDst, int srcDstStep, RvpiSize roiSize);
RVPCV_API RvpStatus rvpiAddProduct_8u32f_C1IR(const Rvp8u* pSrc1, int src1Step, const Rvp8u* pSrc2,
    int src2Step, Rvp32f* pSrcDst, int srcDstStep, RvpiSize roiSize);
RVPCV_API RvpStatus rvpiAddProduct_8u32f_C1IMR(const Rvp8u* pSrc1, int src1Step, const Rvp8u* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, Rvp32f* pSrcDst, int srcDstStep,
    RvpiSize roiSize);
RVPCV_API RvpStatus rvpiAddWeighted_8u32f_C1IR(const Rvp8u* pSrc, int srcStep, Rvp32f* pSrcDst,
    int srcDstStep, RvpiSize roiSize, Rvp32f alpha);
RVPCV_API RvpStatus rvpiAddWeighted_8u32f_C1IMR(const Rvp8u* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, Rvp32f* pSrcDst, int srcDstStep, RvpiSize roiSize, Rvp32f alpha);

/* Rvp8s sources */
RVPCV_API RvpStatus rvpiAdd_8s32f_C1IR(const Rvp8s* pSrc, int srcStep, Rvp32f* pSrcDst,
    int srcDstStep, RvpiSize roiSize);
RVPCV_API RvpStatus rvpiAdd_8s32f_C1IMR(const Rvp8s* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, Rvp32f* pSrcDst, int srcDstStep, RvpiSize roiSize);
RVPCV_API RvpStatus rvpiAddSquare_8s32f_C1IR(const Rvp8s* pSrc, int srcStep, Rvp32f* pSrcDst,
    int srcDstStep, RvpiSize roiSize);
RVPCV_API RvpStatus rvpiAddSquare_8s32f_C1IMR(const Rvp8s* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, Rvp32f* pSrcDst, int srcDstStep, RvpiSize roiSize);
RVPCV_API RvpStatus rvpiAddProduct_8s32f_C1IR(const Rvp8s* pSrc1, int src1Step, const Rvp8s* pSrc2,
    int src2Step, Rvp32f* pSrcDst, int srcDstStep, RvpiSize roiSize);
RVPCV_API RvpStatus rvpiAddProduct_8s32f_C1IMR(const Rvp8s* pSrc1, int src1Step, const Rvp8s* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, Rvp32f* pSrcDst, int srcDstStep,
    RvpiSize roiSize);
RVPCV_API RvpStatus rvpiAddWeighted_8s32f_C1IR(const Rvp8s* pSrc, int srcStep, Rvp32f* pSrcDst,
    int srcDstStep, RvpiSize roiSize, Rvp32f alpha);
RVPCV_API RvpStatus rvpiAddWeighted_8s32f_C1IMR(const Rvp8s* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, Rvp32f* pSrcDst, int srcDstStep, RvpiSize roiSize, Rvp32f alpha);

/* Rvp16u sources */
RVPCV_API RvpStatus rvpiAdd_16u32f_C1IR(const Rvp16u* pSrc, int srcStep, Rvp32f* pSrcDst,
    int srcDstStep, RvpiSize roiSize);
RVPCV_API RvpStatus rvpiAdd_16u32f_C1IMR(const Rvp16u* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, Rvp32f* pSrcDst, int srcDstStep, RvpiSize roiSize);
RVPCV_API RvpStatus rvpiAddSquare_16u32f_C1IR(const Rvp16u* pSrc, int srcStep, Rvp32f* pSrcDst,
    int srcDstStep, RvpiSize roiSize);
RVPCV_API RvpStatus rvpiAddSquare_16u32f_C1IMR(const Rvp16u* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, Rvp32f* pSrcDst, int srcDstStep, RvpiSize roiSize);
RVPCV_API RvpStatus rvpiAddProduct_16u32f_C1IR(const Rvp16u* pSrc1, int src1Step,
    const Rvp16u* pSrc2, int src2Step, Rvp32f* pSrcDst, int srcDstStep, RvpiSize roiSize);
RVPCV_API RvpStatus rvpiAddProduct_16u32f_C1IMR(const Rvp16u* pSrc1, int src1Step,
    const Rvp16u* pSrc2, int src2Step, const Rvp8u* pMask, int maskStep, Rvp32f* pSrcDst,
    int srcDstStep, RvpiSize roiSize);
RVPCV_API RvpStatus rvpiAddWeighted_16u32f_C1IR(const Rvp16u* pSrc, int srcStep, Rvp32f* pSrcDst,
    int srcDstStep, RvpiSize roiSize, Rvp32f alpha);
RVPCV_API RvpStatus rvpiAddWeighted_16u32f_C1IMR(const Rvp16u* pSrc, int srcStep,
    const Rvp8u* pMask, int maskStep, Rvp32f* pSrcDst, int srcDstStep, RvpiSize roiSize,
    Rvp32f alpha);

/* Rvp32f sources */
RVPCV_API RvpStatus rvpiAdd_32f_C1IMR(const Rvp32f* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, Rvp32f* pSrcDst, int srcDstStep, RvpiSize roiSize);
RVPCV_API RvpStatus rvpiAddSquare_32f_C1IR(const Rvp32f* pSrc, int srcStep, Rvp32f* pSrcDst,
    int srcDstStep, RvpiSize roiSize);
RVPCV_API RvpStatus rvpiAddSquare_32f_C1IMR(const Rvp32f* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, Rvp32f* pSrcDst, int srcDstStep, RvpiSize roiSize);
RVPCV_API RvpStatus rvpiAddProduct_32f_C1IR(const Rvp32f* pSrc1, int src1Step, const Rvp32f* pSrc2,
    int src2Step, Rvp32f* pSrcDst, int srcDstStep, RvpiSize roiSize);
RVPCV_API RvpStatus rvpiAddProduct_32f_C1IMR(const Rvp32f* pSrc1, int src1Step, const Rvp32f* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, Rvp32f* pSrcDst, int srcDstStep,
    RvpiSize roiSize);
RVPCV_API RvpStatus rvpiAddWeighted_32f_C1IR(const Rvp32f* pSrc, int srcStep, Rvp32f* pSrcDst,
    int srcDstStep, RvpiSize roiSize, Rvp32f alpha);
RVPCV_API RvpStatus rvpiAddWeighted_32f_C1IMR(const Rvp32f* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, Rvp32f* pSrcDst, int srcDstStep, RvpiSize roiSize, Rvp32f alpha);

/* There is no unmasked rvpiAdd_32f_C1IR. */
RVPCV_API RvpStatus rvpiAddWeighted_32f_C1R(const Rvp32f* pSrc1, int src1Step,
                                            const Rvp32f* pSrc2, int src2Step, Rvp32f* pDst,
                                            int dstStep, RvpiSize roiSize, Rvp32f alpha);

RVPCV_API RvpStatus rvpiAbsDiff_8u_C1R(const Rvp8u* pSrc1, int src1Step, const Rvp8u* pSrc2,
                                       int src2Step, Rvp8u* pDst, int dstStep, RvpiSize roiSize);
/* Channels are independent: the C1 function over a region three times as wide (checks too). */
RVPCV_API RvpStatus rvpiAbsDiff_8u_C3R(const Rvp8u* pSrc1, int src1Step, const Rvp8u* pSrc2,
                                       int src2Step, Rvp8u* pDst, int dstStep, RvpiSize roiSize);
RVPCV_API RvpStatus rvpiAbsDiff_16u_C1R(const Rvp16u* pSrc1, int src1Step, const Rvp16u* pSrc2,
                                        int src2Step, Rvp16u* pDst, int dstStep,
                                        RvpiSize roiSize);
RVPCV_API RvpStatus rvpiAbsDiff_32f_C1R(const Rvp32f* pSrc1, int src1Step, const Rvp32f* pSrc2,
                                        int src2Step, Rvp32f* pDst, int dstStep,
                                        RvpiSize roiSize);
RVPCV_API RvpStatus rvpiAbsDiffC_8u_C1R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst,
                                        int dstStep, RvpiSize roiSize, Rvp32s value);
RVPCV_API RvpStatus rvpiAbsDiffC_16u_C1R(const Rvp16u* pSrc, int srcStep, Rvp16u* pDst,
                                         int dstStep, RvpiSize roiSize, Rvp32s value);
RVPCV_API RvpStatus rvpiAbsDiffC_32f_C1R(const Rvp32f* pSrc, int srcStep, Rvp32f* pDst,
                                         int dstStep, RvpiSize roiSize, Rvp32f value);

/* ============================================================================================
 * Norms, means, deviations and extrema (src/arith/statistics.cpp)
 * ========================================================================================== */
/* section:statistics (declarations follow this line) */


/* ============================================================================================
 * Integral images and window deviations (src/arith/integral.cpp)
 * ========================================================================================== */
/* section:integral (declarations follow this line) */


/* ============================================================================================
 * Motion history (src/arith/motion.cpp)
 * ========================================================================================== */
/* section:motion (declarations follow this line) */


/* ============================================================================================
 * Border model, row/column pipeline and fixed-kernel filters (src/filter/)
 * ========================================================================================== */
/* section:filter (declarations follow this line) */


/* ============================================================================================
 * Gaussian pyramids and pyramid layers (src/filter/pyramid.cpp)
 * ========================================================================================== */
/* section:pyramid (declarations follow this line) */
/* A sub-pixel point (sub-pixel copies and optical flow). */
typedef struct {
  Rvp32f x;
  Rvp32f y;
} RvpiPoint32f;
/* Level sizes, 5x5 Gaussian pyramid levels and general pyramid layers.
 *
 * rvpiPyrDown_Gauss5x5_*: dst is ceil(w/2) x ceil(h/2); dst(X, Y) is the 5x5 sum of
 * w(i)w(j) src(2X + i - 2, 2Y + j - 2), w = 1 4 6 4 1, with positions outside the source
 * mirrored without repeating the edge pixel (-1 reads 1, w reads w - 2; a one-pixel row or
 * column repeats its pixel; the reflection repeats, so 2-pixel images fold back too).
 * Integer types: (sum + 128) >> 8 (halves round up). 32f: each pass adds in the order
 * ((((p0 + 4p1) + 6p2) + 4p3) + p4), vertical pass first, then the sum is multiplied by 1/256;
 * there is no saturation (a float sum may overflow to infinity for |p| near FLT_MAX).
 * rvpiPyrUp_Gauss5x5_*: dst is 2w x 2h; even outputs take p(X-1) + 6p(X) + p(X+1), odd
 * outputs 4p(X) + 4p(X+1) in each direction (vertical pass first; 32f adds in that order),
 * same mirror rule at every side, integer result (sum + 32) >> 6, 32f sum * (1/64). A source
 * width or height above INT_MAX / 2 is -6 (the destination would not fit).
 * Checks: pSrc, pDst, pBuffer null -8; size -6; srcStep then dstStep against their row
 * widths -14, then (32f) against the element size -108. Three-channel forms treat the
 * interleaved channels independently. pBuffer: any alignment, of the queried size.
 *
 * rvpiPyrDownGetBufSize_Gauss5x5 / rvpiPyrUpGetBufSize_Gauss5x5 (roiWidth, dataType,
 * numChannels, pBufSize): pBufSize null -8, roiWidth < 1 -6, numChannels not 1 or 3 -53,
 * dataType not rvp8u, rvp8s or rvp32f -12. Down: 6 * R16(4 * roiWidth * numChannels) + 64
 * bytes (R16: rounded up to a multiple of 16). Up: 4 * R32(4 * (roiWidth + 2) * numChannels)
 * + 64 bytes. A size that does not fit an int is -6. The source width used by the processing
 * call must not exceed roiWidth.
 *
 * rvpiGetPyramidUpROI (srcRoi, pDstRoiMin, pDstRoiMax, rate): for each of width and height n,
 * with single-precision products truncated: min = 1 if n = 1, else
 * max(trunc((n - 1) * rate) + 1, n + 1); max = max(trunc(n * rate), n + 1); both saturate at
 * INT_MAX.
 * rvpiGetPyramidDownROI (srcRoi, pDstRoi, rate): starts from max(1, trunc(0.5 + n / rate))
 * (single precision) per dimension and steps it down or up until the source size lies in the
 * up range of the result. Both: output pointer null -8, size -6, rate not in (1, 10] (NaN
 * included) -5. */
RVPCV_API RvpStatus rvpiGetPyramidDownROI(RvpiSize srcRoi, RvpiSize* pDstRoi, Rvp32f rate);
RVPCV_API RvpStatus rvpiGetPyramidUpROI(RvpiSize srcRoi, RvpiSize* pDstRoiMin,
                                        RvpiSize* pDstRoiMax, Rvp32f rate);
RVPCV_API RvpStatus rvpiPyrDownGetBufSize_Gauss5x5(int roiWidth, RvpDataType dataType,
                                                   int numChannels, int* pBufSize);
RVPCV_API RvpStatus rvpiPyrUpGetBufSize_Gauss5x5(int roiWidth, RvpDataType dataType,
                                                 int numChannels, int* pBufSize);
RVPCV_API RvpStatus rvpiPyrDown_Gauss5x5_8u_C1R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst,
                                                int dstStep, RvpiSize roiSize, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiPyrDown_Gauss5x5_8u_C3R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst,
                                                int dstStep, RvpiSize roiSize, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiPyrDown_Gauss5x5_8s_C1R(const Rvp8s* pSrc, int srcStep, Rvp8s* pDst,
                                                int dstStep, RvpiSize roiSize, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiPyrDown_Gauss5x5_8s_C3R(const Rvp8s* pSrc, int srcStep, Rvp8s* pDst,
                                                int dstStep, RvpiSize roiSize, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiPyrDown_Gauss5x5_32f_C1R(const Rvp32f* pSrc, int srcStep, Rvp32f* pDst,
                                                 int dstStep, RvpiSize roiSize, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiPyrDown_Gauss5x5_32f_C3R(const Rvp32f* pSrc, int srcStep, Rvp32f* pDst,
                                                 int dstStep, RvpiSize roiSize, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiPyrUp_Gauss5x5_8u_C1R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst,
                                              int dstStep, RvpiSize roiSize, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiPyrUp_Gauss5x5_8u_C3R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst,
                                              int dstStep, RvpiSize roiSize, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiPyrUp_Gauss5x5_8s_C1R(const Rvp8s* pSrc, int srcStep, Rvp8s* pDst,
                                              int dstStep, RvpiSize roiSize, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiPyrUp_Gauss5x5_8s_C3R(const Rvp8s* pSrc, int srcStep, Rvp8s* pDst,
                                              int dstStep, RvpiSize roiSize, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiPyrUp_Gauss5x5_32f_C1R(const Rvp32f* pSrc, int srcStep, Rvp32f* pDst,
                                               int dstStep, RvpiSize roiSize, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiPyrUp_Gauss5x5_32f_C3R(const Rvp32f* pSrc, int srcStep, Rvp32f* pDst,
                                               int dstStep, RvpiSize roiSize, Rvp8u* pBuffer);

/* Pyramid record: arrays of level + 1 entries carved from one block. pRoi[0] is the base size
 * and pRoi[i] = rvpiGetPyramidDownROI(pRoi[i-1], rate); pRate[i] = rate^i in double. pImage
 * and pStep start null and 0: the caller attaches each level's image (cast to its element
 * type) and step; pState is the caller's (e.g. a layer state). rvpiPyramidFree releases the
 * block only, never the images or pState (null is accepted and ignored).
 * rvpiPyramidInitAlloc checks: ppPyr null -8, roiSize -6, level < 0 -5, rate not in (1, 10]
 * -5, allocation -9. */
typedef struct {
  Rvp8u** pImage;
  int* pStep;
  RvpiSize* pRoi;
  Rvp64f* pRate;
  void* pState;
  int level;
} RvpiPyramid;
RVPCV_API RvpStatus rvpiPyramidInitAlloc(RvpiSize roiSize, int level, Rvp32f rate,
                                         RvpiPyramid** ppPyr);
RVPCV_API RvpStatus rvpiPyramidFree(RvpiPyramid* pPyr);

/* Pyramid layers for 8u, 16u and 32f, one or three channels.
 * Down: the source is smoothed separably with the kernel (vertical pass, then horizontal; each
 * pass sums tap * pixel in tap order in single precision, starting from the first product;
 * positions outside mirrored as above), multiplied by the single-precision 1/S^2 (S the
 * kernel's sum, formed in double), then sampled linearly at the source position X * rate
 * (single-precision product; integer part i, fraction f; rows blended first, then columns, as
 * a*(1 - f) + b*f, with f = 0 taking a alone and positions at or past the last pixel taking the
 * last pixel). Integer types: floor(v + 0.5) saturated (halves round up; NaN cannot occur).
 * Up: destination pixel x sees the sources j with |j * rate - x| * 2 / rate < r + 1
 * (r = kerSize / 2), each weighted by the kernel at tap position (j * rate - x) * 2 / rate + r,
 * linearly interpolated between taps in double and rounded to single (zero outside the
 * kernel); the vertical and horizontal
 * passes sum weight * pixel in increasing j, and the result is multiplied by 1 / (Wy * Wx),
 * the sums of the weights used. Sources outside the image are mirrored. Integer rounding as
 * for Down. With rate 2 and kernel 1 4 6 4 1 both equal rvpiPyrDown_Gauss5x5 /
 * rvpiPyrUp_Gauss5x5 bit for bit (32f included).
 * InitAlloc (srcRoi for Down and dstRoi for Up is the largest size the state serves): ppState,
 * pKernel null -8; size -6; rate not in (1, 10] -5; kerSize < 1 -6; kerSize even -5; kernel
 * sum zero or not finite -5; mode other than 1 (linear) -5; allocation -9. *ppState is
 * written only on success.
 * Layer calls: pSrc, pDst, pState null -8; a size below 1, a source (Down) or destination (Up)
 * larger than the state serves, or sizes that do not fit each other (the source must lie in
 * rvpiGetPyramidUpROI(dstRoi) for Down, the destination in rvpiGetPyramidUpROI(srcRoi) for Up)
 * -6; srcStep, dstStep -14 then -108; a state made by another member (element type or channel
 * count) -17. Down works in the state's memory (one call at a time per
 * state); Up allocates its rows for the call (-9 when that fails) and only reads the state.
 * Free accepts null. */
typedef struct RvpiPyramidDownState RvpiPyramidDownState;
typedef struct RvpiPyramidUpState RvpiPyramidUpState;
RVPCV_API RvpStatus rvpiPyramidLayerDownInitAlloc_8u_C1R(RvpiSize srcRoi, Rvp32f rate,
    const Rvp32f* pKernel, int kerSize, int mode, RvpiPyramidDownState** ppState);
RVPCV_API RvpStatus rvpiPyramidLayerDown_8u_C1R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst,
    int dstStep, RvpiSize srcRoiSize, RvpiSize dstRoiSize, const RvpiPyramidDownState* pState);
RVPCV_API RvpStatus rvpiPyramidLayerDownFree_8u_C1R(RvpiPyramidDownState* pState);
RVPCV_API RvpStatus rvpiPyramidLayerDownInitAlloc_8u_C3R(RvpiSize srcRoi, Rvp32f rate,
    const Rvp32f* pKernel, int kerSize, int mode, RvpiPyramidDownState** ppState);
RVPCV_API RvpStatus rvpiPyramidLayerDown_8u_C3R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst,
    int dstStep, RvpiSize srcRoiSize, RvpiSize dstRoiSize, const RvpiPyramidDownState* pState);
RVPCV_API RvpStatus rvpiPyramidLayerDownFree_8u_C3R(RvpiPyramidDownState* pState);
RVPCV_API RvpStatus rvpiPyramidLayerDownInitAlloc_16u_C1R(RvpiSize srcRoi, Rvp32f rate,
    const Rvp32f* pKernel, int kerSize, int mode, RvpiPyramidDownState** ppState);
RVPCV_API RvpStatus rvpiPyramidLayerDown_16u_C1R(const Rvp16u* pSrc, int srcStep, Rvp16u* pDst,
    int dstStep, RvpiSize srcRoiSize, RvpiSize dstRoiSize, const RvpiPyramidDownState* pState);
RVPCV_API RvpStatus rvpiPyramidLayerDownFree_16u_C1R(RvpiPyramidDownState* pState);
RVPCV_API RvpStatus rvpiPyramidLayerDownInitAlloc_16u_C3R(RvpiSize srcRoi, Rvp32f rate,
    const Rvp32f* pKernel, int kerSize, int mode, RvpiPyramidDownState** ppState);
RVPCV_API RvpStatus rvpiPyramidLayerDown_16u_C3R(const Rvp16u* pSrc, int srcStep, Rvp16u* pDst,
    int dstStep, RvpiSize srcRoiSize, RvpiSize dstRoiSize, const RvpiPyramidDownState* pState);
RVPCV_API RvpStatus rvpiPyramidLayerDownFree_16u_C3R(RvpiPyramidDownState* pState);
RVPCV_API RvpStatus rvpiPyramidLayerDownInitAlloc_32f_C1R(RvpiSize srcRoi, Rvp32f rate,
    const Rvp32f* pKernel, int kerSize, int mode, RvpiPyramidDownState** ppState);
RVPCV_API RvpStatus rvpiPyramidLayerDown_32f_C1R(const Rvp32f* pSrc, int srcStep, Rvp32f* pDst,
    int dstStep, RvpiSize srcRoiSize, RvpiSize dstRoiSize, const RvpiPyramidDownState* pState);
RVPCV_API RvpStatus rvpiPyramidLayerDownFree_32f_C1R(RvpiPyramidDownState* pState);
RVPCV_API RvpStatus rvpiPyramidLayerDownInitAlloc_32f_C3R(RvpiSize srcRoi, Rvp32f rate,
    const Rvp32f* pKernel, int kerSize, int mode, RvpiPyramidDownState** ppState);
RVPCV_API RvpStatus rvpiPyramidLayerDown_32f_C3R(const Rvp32f* pSrc, int srcStep, Rvp32f* pDst,
    int dstStep, RvpiSize srcRoiSize, RvpiSize dstRoiSize, const RvpiPyramidDownState* pState);
RVPCV_API RvpStatus rvpiPyramidLayerDownFree_32f_C3R(RvpiPyramidDownState* pState);
RVPCV_API RvpStatus rvpiPyramidLayerUpInitAlloc_8u_C1R(RvpiSize dstRoi, Rvp32f rate,
    const Rvp32f* pKernel, int kerSize, int mode, RvpiPyramidUpState** ppState);
RVPCV_API RvpStatus rvpiPyramidLayerUp_8u_C1R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst,
    int dstStep, RvpiSize srcRoiSize, RvpiSize dstRoiSize, const RvpiPyramidUpState* pState);
RVPCV_API RvpStatus rvpiPyramidLayerUpFree_8u_C1R(RvpiPyramidUpState* pState);
RVPCV_API RvpStatus rvpiPyramidLayerUpInitAlloc_8u_C3R(RvpiSize dstRoi, Rvp32f rate,
    const Rvp32f* pKernel, int kerSize, int mode, RvpiPyramidUpState** ppState);
RVPCV_API RvpStatus rvpiPyramidLayerUp_8u_C3R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst,
    int dstStep, RvpiSize srcRoiSize, RvpiSize dstRoiSize, const RvpiPyramidUpState* pState);
RVPCV_API RvpStatus rvpiPyramidLayerUpFree_8u_C3R(RvpiPyramidUpState* pState);
RVPCV_API RvpStatus rvpiPyramidLayerUpInitAlloc_16u_C1R(RvpiSize dstRoi, Rvp32f rate,
    const Rvp32f* pKernel, int kerSize, int mode, RvpiPyramidUpState** ppState);
RVPCV_API RvpStatus rvpiPyramidLayerUp_16u_C1R(const Rvp16u* pSrc, int srcStep, Rvp16u* pDst,
    int dstStep, RvpiSize srcRoiSize, RvpiSize dstRoiSize, const RvpiPyramidUpState* pState);
RVPCV_API RvpStatus rvpiPyramidLayerUpFree_16u_C1R(RvpiPyramidUpState* pState);
RVPCV_API RvpStatus rvpiPyramidLayerUpInitAlloc_16u_C3R(RvpiSize dstRoi, Rvp32f rate,
    const Rvp32f* pKernel, int kerSize, int mode, RvpiPyramidUpState** ppState);
RVPCV_API RvpStatus rvpiPyramidLayerUp_16u_C3R(const Rvp16u* pSrc, int srcStep, Rvp16u* pDst,
    int dstStep, RvpiSize srcRoiSize, RvpiSize dstRoiSize, const RvpiPyramidUpState* pState);
RVPCV_API RvpStatus rvpiPyramidLayerUpFree_16u_C3R(RvpiPyramidUpState* pState);
RVPCV_API RvpStatus rvpiPyramidLayerUpInitAlloc_32f_C1R(RvpiSize dstRoi, Rvp32f rate,
    const Rvp32f* pKernel, int kerSize, int mode, RvpiPyramidUpState** ppState);
RVPCV_API RvpStatus rvpiPyramidLayerUp_32f_C1R(const Rvp32f* pSrc, int srcStep, Rvp32f* pDst,
    int dstStep, RvpiSize srcRoiSize, RvpiSize dstRoiSize, const RvpiPyramidUpState* pState);
RVPCV_API RvpStatus rvpiPyramidLayerUpFree_32f_C1R(RvpiPyramidUpState* pState);
RVPCV_API RvpStatus rvpiPyramidLayerUpInitAlloc_32f_C3R(RvpiSize dstRoi, Rvp32f rate,
    const Rvp32f* pKernel, int kerSize, int mode, RvpiPyramidUpState** ppState);
RVPCV_API RvpStatus rvpiPyramidLayerUp_32f_C3R(const Rvp32f* pSrc, int srcStep, Rvp32f* pDst,
    int dstStep, RvpiSize srcRoiSize, RvpiSize dstRoiSize, const RvpiPyramidUpState* pState);
RVPCV_API RvpStatus rvpiPyramidLayerUpFree_32f_C3R(RvpiPyramidUpState* pState);


/* ============================================================================================
 * Sub-pixel copies and line sampling (src/filter/subpixel.cpp)
 * ========================================================================================== */
/* section:subpixel (declarations follow this line) */
/* Sub-pixel copies.
 * rvpiCopySubpix_* (pSrc, srcStep, pDst, dstStep, roiSize, dx, dy): pSrc points at the pixel
 * holding the integer part of the position; only the fractions of dx, dy are used:
 * fx = dx - trunc(dx), plus 1 when negative, then raised to at least 0.000001; fy likewise,
 * raised to at least 0.000000001. Weights in single precision: w00 = (1-fy)(1-fx),
 * w01 = fx(1-fy), w10 = fy(1-fx), w11 = fx*fy; dst(x, y) =
 * ((w00 s(x,y) + w01 s(x+1,y)) + w10 s(x,y+1)) + w11 s(x+1,y+1), single precision, no fused
 * multiply-add. The source must hold width + 1 columns and height + 1 rows from pSrc (all are
 * read, even when a weight is tiny). 32f destinations store v; 8u and 16u round to nearest,
 * ties to even (values stay in range); 8u16u_C1R_Sfs computes v * 2^-scaleFactor in double
 * (scaleFactor clamped to [-1024, 1024]), rounds to nearest, ties to even, and saturates to
 * 0..65535. NaN and infinity in 32f sources propagate.
 * Checks: pSrc, pDst null -8; size -6; srcStep, dstStep below width times their element size
 * -14; then srcStep, dstStep not multiples of their element size -108.
 *
 * rvpiCopySubpixIntersect_* (pSrc, srcStep, srcRoiSize, pDst, dstStep, dstRoiSize, point,
 * pMin, pMax): a dstRoiSize rectangle centred on the sub-pixel point of a srcRoiSize image.
 * dst(x, y) samples the source at (point.x - (dstW - 1)/2 + x, point.y - (dstH - 1)/2 + y)
 * (single precision), with the weights, floors and rounding of rvpiCopySubpix; the two taps
 * floor(p) and floor(p) + 1 of each axis are clamped to the image, so parts of the rectangle
 * outside the image repeat the nearest edge pixels. *pMin, *pMax receive the inclusive range
 * of destination pixels whose taps all lie inside the image without clamping; when there is
 * none, *pMin = {0, 0} and *pMax = {-1, -1}. Checks: pSrc, pDst, pMin, pMax null -8; either
 * size below 1 -6; steps -14 then -108 (source against srcRoiSize, destination against
 * dstRoiSize); point not finite -5. Only the source region is read.
 *
 * rvpiSampleLine_* (pSrc, srcStep, roiSize, pDst, pt1, pt2): the pixels of the digital line
 * from pt1 to pt2, both ends included, written one pixel (C channels) after another into
 * pDst. With n = max(|dx|, |dy|), sample i (0..n) is pixel (pt1.x + round(i*dx/n),
 * pt1.y + round(i*dy/n)), rounding halves away from zero, in exact integer arithmetic; pDst
 * receives n + 1 pixels. Checks: pSrc, pDst null -8; size -6; srcStep -14 then -108; pt1 or pt2
 * outside the region -11; a sample count beyond the int range -2 (cannot happen when both
 * ends lie inside a valid region, so this build never returns it). */
RVPCV_API RvpStatus rvpiCopySubpix_8u_C1R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst,
    int dstStep, RvpiSize roiSize, Rvp32f dx, Rvp32f dy);
RVPCV_API RvpStatus rvpiCopySubpix_8u32f_C1R(const Rvp8u* pSrc, int srcStep, Rvp32f* pDst,
    int dstStep, RvpiSize roiSize, Rvp32f dx, Rvp32f dy);
RVPCV_API RvpStatus rvpiCopySubpix_16u_C1R(const Rvp16u* pSrc, int srcStep, Rvp16u* pDst,
    int dstStep, RvpiSize roiSize, Rvp32f dx, Rvp32f dy);
RVPCV_API RvpStatus rvpiCopySubpix_16u32f_C1R(const Rvp16u* pSrc, int srcStep, Rvp32f* pDst,
    int dstStep, RvpiSize roiSize, Rvp32f dx, Rvp32f dy);
RVPCV_API RvpStatus rvpiCopySubpix_32f_C1R(const Rvp32f* pSrc, int srcStep, Rvp32f* pDst,
    int dstStep, RvpiSize roiSize, Rvp32f dx, Rvp32f dy);
RVPCV_API RvpStatus rvpiCopySubpix_8u16u_C1R_Sfs(const Rvp8u* pSrc, int srcStep, Rvp16u* pDst,
    int dstStep, RvpiSize roiSize, Rvp32f dx, Rvp32f dy, int scaleFactor);
RVPCV_API RvpStatus rvpiCopySubpixIntersect_8u_C1R(const Rvp8u* pSrc, int srcStep,
    RvpiSize srcRoiSize, Rvp8u* pDst, int dstStep, RvpiSize dstRoiSize, RvpiPoint32f point,
    RvpiPoint* pMin, RvpiPoint* pMax);
RVPCV_API RvpStatus rvpiCopySubpixIntersect_8u32f_C1R(const Rvp8u* pSrc, int srcStep,
    RvpiSize srcRoiSize, Rvp32f* pDst, int dstStep, RvpiSize dstRoiSize, RvpiPoint32f point,
    RvpiPoint* pMin, RvpiPoint* pMax);
RVPCV_API RvpStatus rvpiCopySubpixIntersect_16u_C1R(const Rvp16u* pSrc, int srcStep,
    RvpiSize srcRoiSize, Rvp16u* pDst, int dstStep, RvpiSize dstRoiSize, RvpiPoint32f point,
    RvpiPoint* pMin, RvpiPoint* pMax);
RVPCV_API RvpStatus rvpiCopySubpixIntersect_16u32f_C1R(const Rvp16u* pSrc, int srcStep,
    RvpiSize srcRoiSize, Rvp32f* pDst, int dstStep, RvpiSize dstRoiSize, RvpiPoint32f point,
    RvpiPoint* pMin, RvpiPoint* pMax);
RVPCV_API RvpStatus rvpiCopySubpixIntersect_32f_C1R(const Rvp32f* pSrc, int srcStep,
    RvpiSize srcRoiSize, Rvp32f* pDst, int dstStep, RvpiSize dstRoiSize, RvpiPoint32f point,
    RvpiPoint* pMin, RvpiPoint* pMax);
RVPCV_API RvpStatus rvpiCopySubpixIntersect_8u16u_C1R_Sfs(const Rvp8u* pSrc, int srcStep,
    RvpiSize srcRoiSize, Rvp16u* pDst, int dstStep, RvpiSize dstRoiSize, RvpiPoint32f point,
    RvpiPoint* pMin, RvpiPoint* pMax, int scaleFactor);
RVPCV_API RvpStatus rvpiSampleLine_8u_C1R(const Rvp8u* pSrc, int srcStep, RvpiSize roiSize,
    Rvp8u* pDst, RvpiPoint pt1, RvpiPoint pt2);
RVPCV_API RvpStatus rvpiSampleLine_8u_C3R(const Rvp8u* pSrc, int srcStep, RvpiSize roiSize,
    Rvp8u* pDst, RvpiPoint pt1, RvpiPoint pt2);
RVPCV_API RvpStatus rvpiSampleLine_16u_C1R(const Rvp16u* pSrc, int srcStep, RvpiSize roiSize,
    Rvp16u* pDst, RvpiPoint pt1, RvpiPoint pt2);
RVPCV_API RvpStatus rvpiSampleLine_16u_C3R(const Rvp16u* pSrc, int srcStep, RvpiSize roiSize,
    Rvp16u* pDst, RvpiPoint pt1, RvpiPoint pt2);
RVPCV_API RvpStatus rvpiSampleLine_32f_C1R(const Rvp32f* pSrc, int srcStep, RvpiSize roiSize,
    Rvp32f* pDst, RvpiPoint pt1, RvpiPoint pt2);
RVPCV_API RvpStatus rvpiSampleLine_32f_C3R(const Rvp32f* pSrc, int srcStep, RvpiSize roiSize,
    Rvp32f* pDst, RvpiPoint pt1, RvpiPoint pt2);


/* ============================================================================================
 * Morphology (src/morph/)
 * ========================================================================================== */
/* section:morph (declarations follow this line) */


/* ============================================================================================
 * Canny edge detector (src/feature/canny.cpp)
 * ========================================================================================== */
/* section:canny (declarations follow this line) */


/* ============================================================================================
 * Pyramidal Lucas-Kanade optical flow (src/feature/optical_flow.cpp)
 * ========================================================================================== */
/* section:flow (declarations follow this line) */
/* Pyramidal Lucas-Kanade tracking of feature points from image 1 to image 2, each given as a
 * pyramid record (rvpiPyramidInitAlloc) whose level images the caller has attached (pImage[L]
 * cast from the element type, pStep[L], pRoi[L]); level L's scale is pPyr1->pRate[L] (the
 * second record's rates are checked but not used).
 *
 * rvpiOpticalFlowPyrLKInitAlloc_* (roiSize, winSize, ppState): ppState null -8; roiSize < 1 or
 * winSize < 1 -6; allocation -9. The state serves level-0 images up to roiSize and windows of
 * exactly winSize; it holds the work areas (one call at a time per state).
 * rvpiOpticalFlowPyrLK_* checks: pPyr1, pPyr2, pPrev, pNext, pStatus, pError, pState null -8;
 * numFeat < 1, winSize < 1 or different from the state's -6; maxLev < 0, maxIter < 1,
 * threshold < 0 or NaN -5; maxLev above either record's level -5; then for levels 0..maxLev
 * of both records: a null record array or level image -8, a level size below 1, sizes that
 * differ between the two records or a level 0 larger than the state serves -6, a level step
 * below its row width -14, a step not a multiple of the element size -108, a level scale
 * pRate[L] not finite or not above 0 -5; a state made by another member (element type) -17.
 * Nothing is written on error.
 *
 * Per point, for L = maxLev down to 0: the status byte is set to L; the previous position and
 * the running estimate (starting at the previous position, no initial flow) are divided by
 * pRate[L]. The window is winSize x winSize pixels centred on the point (offsets
 * k - (winSize - 1) / 2), sampled bilinearly. 8u and 16u sample in fixed point: weights
 * round(w * 2^14) (the last, w11, is 2^14 minus the others and may be -1 or -2) and values
 * (sum + 64) >> 7, i.e. intensity * 128; 32f samples (w00 p00 + w01 p01 + w10 p10 + w11 p11) * 128 in single
 * precision. Window pixels beyond the image edge read the nearest edge pixel. Gradients are
 * central differences (I(x+1) - I(x-1)) / 2 of the sampled image-1 window. G and b are summed
 * in double (b = sum (I1 - I2) * g); the point is lost at L when det G < 2.220446049250313e-16,
 * or when its position leaves the level image by more than half a window (outside
 * [-(winSize-1)/2, size - 1 + (winSize-1)/2]). Each iteration solves G d = b by Cramer's rule
 * in double, adds d (rounded to single) to the estimate, and stops when dx^2 + dy^2 < threshold
 * or, from the second iteration, when |dx + dx_prev| and |dy + dy_prev| are both below
 * 0.00034526698 (the estimate then moves back by d/2); at most maxIter iterations. Between
 * levels the estimate is multiplied by pRate[L] / pRate[L-1].
 * Results: a tracked point gets status 0, its level-0 position in pNext and the error
 * sqrt(S / N) * 0.0078125 with S the sum of squared differences of the two windows at the
 * final position (in the intensity * 128 scale) and N = winSize^2 (0 when S <= 0). A lost
 * point keeps the level it was lost at as its status (so a point lost at level 0 has status
 * 0 too: its error tells it apart), its last estimate scaled to level 0 (times pRate[L]) in
 * pNext, and the error -1. */
typedef struct RvpiOptFlowPyrLKState RvpiOptFlowPyrLKState;
RVPCV_API RvpStatus rvpiOpticalFlowPyrLKInitAlloc_8u_C1R(RvpiSize roiSize, int winSize,
    RvpiOptFlowPyrLKState** ppState);
RVPCV_API RvpStatus rvpiOpticalFlowPyrLKFree_8u_C1R(RvpiOptFlowPyrLKState* pState);
RVPCV_API RvpStatus rvpiOpticalFlowPyrLK_8u_C1R(const RvpiPyramid* pPyr1, const RvpiPyramid* pPyr2,
    const RvpiPoint32f* pPrev, RvpiPoint32f* pNext, Rvp8s* pStatus, Rvp32f* pError, int numFeat,
    int winSize, int maxLev, int maxIter, Rvp32f threshold, RvpiOptFlowPyrLKState* pState);
RVPCV_API RvpStatus rvpiOpticalFlowPyrLKInitAlloc_16u_C1R(RvpiSize roiSize, int winSize,
    RvpiOptFlowPyrLKState** ppState);
RVPCV_API RvpStatus rvpiOpticalFlowPyrLKFree_16u_C1R(RvpiOptFlowPyrLKState* pState);
RVPCV_API RvpStatus rvpiOpticalFlowPyrLK_16u_C1R(const RvpiPyramid* pPyr1, const RvpiPyramid* pPyr2,
    const RvpiPoint32f* pPrev, RvpiPoint32f* pNext, Rvp8s* pStatus, Rvp32f* pError, int numFeat,
    int winSize, int maxLev, int maxIter, Rvp32f threshold, RvpiOptFlowPyrLKState* pState);
RVPCV_API RvpStatus rvpiOpticalFlowPyrLKInitAlloc_32f_C1R(RvpiSize roiSize, int winSize,
    RvpiOptFlowPyrLKState** ppState);
RVPCV_API RvpStatus rvpiOpticalFlowPyrLKFree_32f_C1R(RvpiOptFlowPyrLKState* pState);
RVPCV_API RvpStatus rvpiOpticalFlowPyrLK_32f_C1R(const RvpiPyramid* pPyr1, const RvpiPyramid* pPyr2,
    const RvpiPoint32f* pPrev, RvpiPoint32f* pNext, Rvp8s* pStatus, Rvp32f* pError, int numFeat,
    int winSize, int maxLev, int maxIter, Rvp32f threshold, RvpiOptFlowPyrLKState* pState);


/* ============================================================================================
 * Flood fill (src/segment/flood_fill.cpp)
 * ========================================================================================== */
/* section:floodfill (declarations follow this line) */


/* ============================================================================================
 * Connected-component labelling and speckles (src/segment/labelling.cpp)
 * ========================================================================================== */
/* section:labelling (declarations follow this line) */


/* ============================================================================================
 * Distance transforms and fast marching (src/segment/distance.cpp)
 * ========================================================================================== */
/* section:distance (declarations follow this line) */


/* ============================================================================================
 * Haar cascade classifiers (src/detect/haar.cpp)
 * ========================================================================================== */
/* section:haar (declarations follow this line) */


/* ============================================================================================
 * Gaussian-mixture background model (src/bgfg/gmm.cpp)
 * ========================================================================================== */
/* section:gmm (declarations follow this line) */



#ifdef __cplusplus
}
#endif

#endif /* RVPCV_H */
