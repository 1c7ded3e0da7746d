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
 * Results do not depend on alignment, width or step. alpha is used as given (no clamping).
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


/* ============================================================================================
 * Sub-pixel copies and line sampling (src/filter/subpixel.cpp)
 * ========================================================================================== */
/* section:subpixel (declarations follow this line) */


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


/* ============================================================================================
 * Flood fill (src/segment/flood_fill.cpp)
 * ========================================================================================== */
/* section:floodfill (declarations follow this line) */
/* Buffer bytes of the plain and range fills (and of rvpiLabelMarkers_*): 6*width*height + 32,
 * computed in 64 bits and truncated to 32. Null pBufferSize -> -8, width or height < 1 -> -6. */
RVPCV_API RvpStatus rvpiFloodFillGetSize(RvpiSize roiSize, int* pBufferSize);
/* Buffer bytes of the gradient fills: (width+2)*(height+2) + 64 + (48*width*height)/3. Null
 * pBufferSize -> -8; width or height < 1, or a size above INT_MAX -> -6. */
RVPCV_API RvpStatus rvpiFloodFillGetSize_Grad(RvpiSize roiSize, int* pBufferSize);
/* Flood fill in place from `seed` with `newVal`, reporting the filled region in *pRegion
 * (area, value: newVal, one-channel fills put 0 in value[1] and value[2], rect: bounding box).
 *   plain (4Con/8Con):        pixels equal to the seed value join (float equality: -0 == +0,
 *                             NaN equals nothing, so a NaN seed fills only itself);
 *   range (Range4Con/8Con):   pixels with every channel in [v - minDelta, v + maxDelta] around
 *                             the seed value v join (8u/16u: clamped to the type's range; 32f:
 *                             bounds rounded in single precision, deltas used as given, NaN
 *                             never joins);
 *   gradient (Grad4Con/8Con): a pixel n joins when c - minDelta <= n <= c + maxDelta for the
 *                             filled neighbour c that reaches it (every channel). Along a row c
 *                             is the horizontal neighbour; from the source row it is the pixel
 *                             above/below, or for 8Con any of the three adjacent source pixels.
 *                             The filled set is every pixel reachable from the seed by such
 *                             steps; nothing is written until it is complete.
 * Three-channel members take newVal, minDelta and maxDelta as pointers to three values; a pixel
 * joins only when all channels pass. 8Con fills reach diagonal neighbours on both rows around
 * each span, so they fill the full 8-connected component.
 * Plain and range fills return 0 at once, writing neither the image nor *pRegion, when the
 * seed value equals newVal (all channels). The range rule treats a pixel that already holds
 * newVal as filled: it neither joins nor is counted (this is how filled pixels are told apart;
 * choose a newVal outside the interval to fill through such pixels). Gradient fills have no
 * early return.
 * pBuffer: rvpiFloodFillGetSize bytes (rvpiFloodFillGetSize_Grad for the gradient members), any
 * alignment. It holds the stack of pending spans, six Rvp32s each (row, left, right, parent
 * left, parent right, dir), from the pointer aligned up to 8; the gradient members first keep a
 * (width + 2) x (height + 2) visited mask (frame 1, interior 0) at the start of the buffer.
 * Range fills keep a deliberate stack limit of width*height/4 entries: a push that reaches it
 * drops every pending span and the fill ends after the row scan in progress, without error (so
 * images of 4 to 7 pixels fill only the seed row). The stack never outgrows the buffer: a plain
 * fill whose pending spans would not fit ends the same way (only possible when the region has
 * more horizontal runs than width*height/4 + 1), a gradient fill completes by sweeping its mask
 * (same result). Images of fewer than 4 pixels use a small stack of their own. The record's
 * area and box always describe exactly the pixels that were filled.
 * Checks: null pImage, newVal/minDelta/maxDelta (three-channel), pRegion, pBuffer -> -8; width
 * or height < 1 -> -6 (gradient members also when their buffer size exceeds INT_MAX); imageStep
 * below width*channels*elementSize -> -14; 16u step odd, 32s/32f step not a multiple of 4 ->
 * -108; seed outside the region -> -11. */
RVPCV_API RvpStatus rvpiFloodFill_4Con_8u_C1IR(Rvp8u* pImage, int imageStep, RvpiSize roiSize,
    RvpiPoint seed, Rvp8u newVal, RvpiConnectedComp* pRegion, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_4Con_8u_C3IR(Rvp8u* pImage, int imageStep, RvpiSize roiSize,
    RvpiPoint seed, const Rvp8u* newVal, RvpiConnectedComp* pRegion, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_4Con_16u_C1IR(Rvp16u* pImage, int imageStep, RvpiSize roiSize,
    RvpiPoint seed, Rvp16u newVal, RvpiConnectedComp* pRegion, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_4Con_16u_C3IR(Rvp16u* pImage, int imageStep, RvpiSize roiSize,
    RvpiPoint seed, const Rvp16u* newVal, RvpiConnectedComp* pRegion, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_4Con_32s_C1IR(Rvp32s* pImage, int imageStep, RvpiSize roiSize,
    RvpiPoint seed, Rvp32s newVal, RvpiConnectedComp* pRegion, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_4Con_32f_C1IR(Rvp32f* pImage, int imageStep, RvpiSize roiSize,
    RvpiPoint seed, Rvp32f newVal, RvpiConnectedComp* pRegion, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_4Con_32f_C3IR(Rvp32f* pImage, int imageStep, RvpiSize roiSize,
    RvpiPoint seed, const Rvp32f* newVal, RvpiConnectedComp* pRegion, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_8Con_8u_C1IR(Rvp8u* pImage, int imageStep, RvpiSize roiSize,
    RvpiPoint seed, Rvp8u newVal, RvpiConnectedComp* pRegion, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_8Con_8u_C3IR(Rvp8u* pImage, int imageStep, RvpiSize roiSize,
    RvpiPoint seed, const Rvp8u* newVal, RvpiConnectedComp* pRegion, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_8Con_16u_C1IR(Rvp16u* pImage, int imageStep, RvpiSize roiSize,
    RvpiPoint seed, Rvp16u newVal, RvpiConnectedComp* pRegion, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_8Con_16u_C3IR(Rvp16u* pImage, int imageStep, RvpiSize roiSize,
    RvpiPoint seed, const Rvp16u* newVal, RvpiConnectedComp* pRegion, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_8Con_32s_C1IR(Rvp32s* pImage, int imageStep, RvpiSize roiSize,
    RvpiPoint seed, Rvp32s newVal, RvpiConnectedComp* pRegion, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_8Con_32f_C1IR(Rvp32f* pImage, int imageStep, RvpiSize roiSize,
    RvpiPoint seed, Rvp32f newVal, RvpiConnectedComp* pRegion, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_8Con_32f_C3IR(Rvp32f* pImage, int imageStep, RvpiSize roiSize,
    RvpiPoint seed, const Rvp32f* newVal, RvpiConnectedComp* pRegion, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_Range4Con_8u_C1IR(Rvp8u* pImage, int imageStep, RvpiSize roiSize,
    RvpiPoint seed, Rvp8u newVal, Rvp8u minDelta, Rvp8u maxDelta, RvpiConnectedComp* pRegion,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_Range4Con_8u_C3IR(Rvp8u* pImage, int imageStep, RvpiSize roiSize,
    RvpiPoint seed, const Rvp8u* newVal, const Rvp8u* minDelta, const Rvp8u* maxDelta,
    RvpiConnectedComp* pRegion, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_Range4Con_16u_C1IR(Rvp16u* pImage, int imageStep,
    RvpiSize roiSize, RvpiPoint seed, Rvp16u newVal, Rvp16u minDelta, Rvp16u maxDelta,
    RvpiConnectedComp* pRegion, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_Range4Con_16u_C3IR(Rvp16u* pImage, int imageStep,
    RvpiSize roiSize, RvpiPoint seed, const Rvp16u* newVal, const Rvp16u* minDelta,
    const Rvp16u* maxDelta, RvpiConnectedComp* pRegion, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_Range4Con_32f_C1IR(Rvp32f* pImage, int imageStep,
    RvpiSize roiSize, RvpiPoint seed, Rvp32f newVal, Rvp32f minDelta, Rvp32f maxDelta,
    RvpiConnectedComp* pRegion, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_Range4Con_32f_C3IR(Rvp32f* pImage, int imageStep,
    RvpiSize roiSize, RvpiPoint seed, const Rvp32f* newVal, const Rvp32f* minDelta,
    const Rvp32f* maxDelta, RvpiConnectedComp* pRegion, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_Range8Con_8u_C1IR(Rvp8u* pImage, int imageStep, RvpiSize roiSize,
    RvpiPoint seed, Rvp8u newVal, Rvp8u minDelta, Rvp8u maxDelta, RvpiConnectedComp* pRegion,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_Range8Con_8u_C3IR(Rvp8u* pImage, int imageStep, RvpiSize roiSize,
    RvpiPoint seed, const Rvp8u* newVal, const Rvp8u* minDelta, const Rvp8u* maxDelta,
    RvpiConnectedComp* pRegion, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_Range8Con_16u_C1IR(Rvp16u* pImage, int imageStep,
    RvpiSize roiSize, RvpiPoint seed, Rvp16u newVal, Rvp16u minDelta, Rvp16u maxDelta,
    RvpiConnectedComp* pRegion, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_Range8Con_16u_C3IR(Rvp16u* pImage, int imageStep,
    RvpiSize roiSize, RvpiPoint seed, const Rvp16u* newVal, const Rvp16u* minDelta,
    const Rvp16u* maxDelta, RvpiConnectedComp* pRegion, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_Range8Con_32f_C1IR(Rvp32f* pImage, int imageStep,
    RvpiSize roiSize, RvpiPoint seed, Rvp32f newVal, Rvp32f minDelta, Rvp32f maxDelta,
    RvpiConnectedComp* pRegion, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_Range8Con_32f_C3IR(Rvp32f* pImage, int imageStep,
    RvpiSize roiSize, RvpiPoint seed, const Rvp32f* newVal, const Rvp32f* minDelta,
    const Rvp32f* maxDelta, RvpiConnectedComp* pRegion, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_Grad4Con_8u_C1IR(Rvp8u* pImage, int imageStep, RvpiSize roiSize,
    RvpiPoint seed, Rvp8u newVal, Rvp8u minDelta, Rvp8u maxDelta, RvpiConnectedComp* pRegion,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_Grad4Con_8u_C3IR(Rvp8u* pImage, int imageStep, RvpiSize roiSize,
    RvpiPoint seed, const Rvp8u* newVal, const Rvp8u* minDelta, const Rvp8u* maxDelta,
    RvpiConnectedComp* pRegion, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_Grad4Con_16u_C1IR(Rvp16u* pImage, int imageStep, RvpiSize roiSize,
    RvpiPoint seed, Rvp16u newVal, Rvp16u minDelta, Rvp16u maxDelta, RvpiConnectedComp* pRegion,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_Grad4Con_16u_C3IR(Rvp16u* pImage, int imageStep, RvpiSize roiSize,
    RvpiPoint seed, const Rvp16u* newVal, const Rvp16u* minDelta, const Rvp16u* maxDelta,
    RvpiConnectedComp* pRegion, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_Grad4Con_32f_C1IR(Rvp32f* pImage, int imageStep, RvpiSize roiSize,
    RvpiPoint seed, Rvp32f newVal, Rvp32f minDelta, Rvp32f maxDelta, RvpiConnectedComp* pRegion,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_Grad4Con_32f_C3IR(Rvp32f* pImage, int imageStep, RvpiSize roiSize,
    RvpiPoint seed, const Rvp32f* newVal, const Rvp32f* minDelta, const Rvp32f* maxDelta,
    RvpiConnectedComp* pRegion, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_Grad8Con_8u_C1IR(Rvp8u* pImage, int imageStep, RvpiSize roiSize,
    RvpiPoint seed, Rvp8u newVal, Rvp8u minDelta, Rvp8u maxDelta, RvpiConnectedComp* pRegion,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_Grad8Con_8u_C3IR(Rvp8u* pImage, int imageStep, RvpiSize roiSize,
    RvpiPoint seed, const Rvp8u* newVal, const Rvp8u* minDelta, const Rvp8u* maxDelta,
    RvpiConnectedComp* pRegion, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_Grad8Con_16u_C1IR(Rvp16u* pImage, int imageStep, RvpiSize roiSize,
    RvpiPoint seed, Rvp16u newVal, Rvp16u minDelta, Rvp16u maxDelta, RvpiConnectedComp* pRegion,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_Grad8Con_16u_C3IR(Rvp16u* pImage, int imageStep, RvpiSize roiSize,
    RvpiPoint seed, const Rvp16u* newVal, const Rvp16u* minDelta, const Rvp16u* maxDelta,
    RvpiConnectedComp* pRegion, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_Grad8Con_32f_C1IR(Rvp32f* pImage, int imageStep, RvpiSize roiSize,
    RvpiPoint seed, Rvp32f newVal, Rvp32f minDelta, Rvp32f maxDelta, RvpiConnectedComp* pRegion,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFloodFill_Grad8Con_32f_C3IR(Rvp32f* pImage, int imageStep, RvpiSize roiSize,
    RvpiPoint seed, const Rvp32f* newVal, const Rvp32f* minDelta, const Rvp32f* maxDelta,
    RvpiConnectedComp* pRegion, Rvp8u* pBuffer);


/* ============================================================================================
 * Connected-component labelling and speckles (src/segment/labelling.cpp)
 * ========================================================================================== */
/* section:labelling (declarations follow this line) */
/* Buffer bytes of rvpiLabelMarkers_*: 6*width*height + 32 (computed in 64 bits, truncated to
 * 32), the size of rvpiFloodFillGetSize. Null pBufferSize -> -8, width or height < 1 -> -6. */
RVPCV_API RvpStatus rvpiLabelMarkersGetBufferSize_8u_C1R(RvpiSize roiSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiLabelMarkersGetBufferSize_16u_C1R(RvpiSize roiSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiLabelMarkersGetBufferSize_8u32s_C1R(RvpiSize roiSize, int* pBufferSize);
/* Labels every 4-connected (norm 1) or 8-connected (norm 0) region of nonzero pixels. Regions
 * are numbered in the raster order of their first pixel: the first gets minLabel, each next
 * one the next label, wrapping from maxLabel back to minLabel (after a wrap separate regions
 * share labels). Zero pixels stay 0. *pNumber receives the number of regions found, not capped
 * at the number of distinct labels.
 * The labels are exactly those of thresholding nonzero pixels to the marker (255, 65535, or
 * 2147483647 in the 32s label image) and flood-filling each marker pixel met in a raster scan
 * with the plain fill of matching connectivity and pBuffer; a fill whose pending spans would
 * outgrow pBuffer ends early as the plain fill does (only for regions with more than
 * width*height/4 + 1 horizontal runs), and the rest of its region is labelled as a new one.
 * pBuffer: rvpiLabelMarkersGetBufferSize bytes, any alignment; it is overwritten.
 * The 8u32s member writes the labels into pDst (0 where pSrc is 0) and leaves pSrc untouched.
 * Checks (in place): null pMarker, pBuffer, pNumber -> -8; width or height < 1 -> -6;
 * markerStep < width*elementSize -> -14; 16u markerStep odd -> -108; minLabel < 1, maxLabel at
 * or above the marker, or minLabel > maxLabel -> -5; norm other than 0 or 1 -> -5.
 * 8u32s: null pSrc, pDst, pNumber, pBuffer -> -8; size -> -6; srcStep < width or dstStep <
 * 4*width -> -14; dstStep not a multiple of 4 -> -108; labels or norm as above -> -5. */
RVPCV_API RvpStatus rvpiLabelMarkers_8u_C1IR(Rvp8u* pMarker, int markerStep, RvpiSize roiSize,
    int minLabel, int maxLabel, int norm, int* pNumber, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiLabelMarkers_16u_C1IR(Rvp16u* pMarker, int markerStep, RvpiSize roiSize,
    int minLabel, int maxLabel, int norm, int* pNumber, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiLabelMarkers_8u32s_C1R(const Rvp8u* pSrc, int srcStep, Rvp32s* pDst,
    int dstStep, RvpiSize roiSize, int minLabel, int maxLabel, int norm, int* pNumber,
    Rvp8u* pBuffer);
/* Buffer bytes of rvpiMarkSpeckles_*: 13*width*height + 64. Checks: null pBufferSize -> -8;
 * width or height < 1, or a size above INT_MAX -> -6; dataType not rvp8u, rvp16u, rvp16s or
 * rvp32f -> -12; numChannels other than 1 -> -53. */
RVPCV_API RvpStatus rvpiMarkSpecklesGetBufferSize(RvpiSize roiSize, RvpDataType dataType,
    int numChannels, int* pBufferSize);
/* Overwrites small regions ("speckles") with speckleVal, in place. A region is a 4-connected
 * set of pixels not equal to speckleVal in which neighbours differ by at most maxPixDiff
 * (|n - p| <= maxPixDiff, taken between the two neighbours, in 32-bit integers for 8u, 16u and
 * 16s and in single precision for 32f). A region of at most maxSpeckleSize pixels is a
 * speckle: all its pixels become speckleVal (so maxSpeckleSize <= 0 marks nothing). Pixels
 * equal to speckleVal belong to no region and separate regions.
 * 32f: equality and the difference test are IEEE comparisons, so a NaN pixel joins no
 * neighbour (it is a one-pixel region of its own), a NaN maxPixDiff makes every pixel its own
 * region, and a NaN speckleVal separates nothing; -0 and +0 are equal.
 * The result does not depend on the order in which regions are searched.
 * norm must be 1 (the L1 neighbourhood). pBuffer: rvpiMarkSpecklesGetBufferSize bytes, any
 * alignment, aligned up to 64 internally; it holds the per-pixel region bookkeeping and is
 * overwritten.
 * Checks: null pImage, pBuffer -> -8; width or height < 1 (or a buffer size above INT_MAX) ->
 * -6; imageStep < width*elementSize -> -14; 16-bit step odd, 32f step not a multiple of 4 ->
 * -108; norm other than 1 -> rvpStsModeErr (-229). */
RVPCV_API RvpStatus rvpiMarkSpeckles_8u_C1IR(Rvp8u* pImage, int imageStep, RvpiSize roiSize,
    Rvp8u speckleVal, int maxSpeckleSize, Rvp8u maxPixDiff, int norm, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiMarkSpeckles_16u_C1IR(Rvp16u* pImage, int imageStep, RvpiSize roiSize,
    Rvp16u speckleVal, int maxSpeckleSize, Rvp16u maxPixDiff, int norm, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiMarkSpeckles_16s_C1IR(Rvp16s* pImage, int imageStep, RvpiSize roiSize,
    Rvp16s speckleVal, int maxSpeckleSize, Rvp16s maxPixDiff, int norm, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiMarkSpeckles_32f_C1IR(Rvp32f* pImage, int imageStep, RvpiSize roiSize,
    Rvp32f speckleVal, int maxSpeckleSize, Rvp32f maxPixDiff, int norm, Rvp8u* pBuffer);


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
