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
/* Per-pixel adaptive mixture of Gaussians over 3-channel 8-bit frames. The caller sizes one
 * buffer with rvpiFGMMGetBufferSize_8u_C3R, allocates it (any alignment), prepares it with
 * rvpiFGMMInit_8u_C3R, then folds frames in with rvpiFGMMForeground_8u_C3R and renders the
 * background with rvpiFGMMBackground_8u_C3R. The whole state lives in that buffer and the
 * library keeps no pointer into it; every call aligns the buffer address up to 32 bytes, so a
 * byte copy of the buffer is a valid state when its address has the same value modulo 32.
 * The buffer must hold a state prepared by Init. Its planes are not trusted blindly: mode
 * counts and data-slot indices are clamped to the recorded maximum N, so damaged planes cannot
 * send an access outside the buffer; a header that does not describe a state for the call's
 * roiSize (size, N within 1..255, stored numGauss within 1..N) is refused with -6.
 *
 * State: a frame counter, a copy of the parameter record, the Init size and component maximum
 * N, a mode-count plane (one byte per pixel), and per component position k < N a weight plane
 * (float), an order plane (int32: which data plane holds the pixel's k-th strongest component)
 * and per data slot a plane of 4 floats per pixel (mean of channels 0, 1, 2, and one variance).
 *
 * Arithmetic is single precision; every product added to a sum is one fused multiply-add;
 * distances and dot products accumulate channel 0, then 1, then 2. Results are identical
 * whatever the width, alignment or step. */

/* Parameter record, 48 bytes. The 4 bytes after numGauss are a named reserved field that the
 * library never reads (it is copied with the record). */
typedef struct {
  int numFrames;             /* history length: the default rate is 1 / min(2n + 2, numFrames) */
  int numGauss;              /* components per pixel in use, 1 .. the Init maximum */
  int reserved;              /* never read */
  Rvp32f varInit;            /* variance of a newly created component */
  Rvp32f varMin;             /* every updated variance is clamped to [varMin, varMax] */
  Rvp32f varMax;
  Rvp32f varThreshold;       /* background and shadow test, in units of variance */
  Rvp32f bgRatio;            /* cumulative weight the background components make up */
  Rvp32f varThresholdGen;    /* match test for updating a component */
  Rvp32f complexityReduction;/* weight-pruning prior */
  Rvp8u shadowValue;         /* mask value of a shadow pixel */
  Rvp8u shadowDetection;     /* nonzero: run the shadow test on non-background pixels */
  Rvp32f shadowTau;          /* lower bound of a shadow's brightness ratio */
} RvpFGMModel;

/* Buffer bytes for a roiSize region and maxNGauss components, A(n) being n rounded up to 32:
 * A(16·W·H·N) + 3·A(8·N) + 416 + A(W·H) + 2·A(4·W·H·N).
 * Checks: null pBufSize → -8; width or height < 1 → -6; maxNGauss outside 1..255 → -5 (the
 * mode count is one byte per pixel); a total that does not fit a signed 32-bit count → -6.
 * *pBufSize is written only on success. */
RVPCV_API RvpStatus rvpiFGMMGetBufferSize_8u_C3R(RvpiSize roiSize, int maxNGauss,
                                                 int* pBufSize);

/* Prepares the state in pState (at least the queried size, any alignment): zeroes all the
 * queried bytes, copies *pModel with numGauss replaced by maxNGauss, records roiSize and
 * maxNGauss, fills order plane k with k, frame counter 0, all mode counts 0.
 * Checks: null pModel or pState → -8; width or height < 1 → -6; maxNGauss outside 1..255 →
 * -5; a size that does not fit a signed 32-bit count → -6. The parameter values are not
 * checked (a numFrames below 1 gives a meaningless rate, never an access outside the state). */
RVPCV_API RvpStatus rvpiFGMMInit_8u_C3R(RvpiSize roiSize, int maxNGauss,
                                        const RvpFGMModel* pModel, Rvp8u* pState);

/* Folds one frame (pSrc, 3 channels) into the model and writes the mask pDst (1 channel):
 * 0 background, 255 foreground, shadowValue for a detected shadow. pModel may be null (the
 * stored parameters are kept); when given it replaces all stored parameters for this and later
 * calls. learningRate < 0, and any rate on the first call after Init, selects the default
 * alpha = 1 / min(2n + 2, numFrames) with n the frame count before the call; otherwise alpha =
 * learningRate, used as given (no clamping). alpha is formed in double and rounded to float
 * once; decay = 1 − alpha and prune = alpha · complexityReduction are then single precision.
 * Per pixel (m modes in descending weight order, N = numGauss):
 *   1. for k < m (m may shrink): w = fma(decay, w_k, −prune); until a match: d² = |mean − x|²;
 *      if bgRatio > (sum of the earlier counted weights) and varThreshold·v > d² the pixel is
 *      background; if varThresholdGen·v > d² the component matches: w += alpha, r = alpha / w,
 *      mean = fma(r, x − mean, mean) (the value of mean − r·(mean − x) rounded once),
 *      v = fma(r, d² − v, v) clamped to [varMin, varMax] (as max then min; a NaN becomes
 *      varMin), and it moves up past every earlier component whose weight is ≤ w. If
 *      w < prune, m shrinks by one (the last position leaves use, whichever component was
 *      pruned) and the component does not count (an unmatched one gets weight 0, a matched one
 *      keeps its stored weight); otherwise w is stored and counted.
 *   2. m > 0: each of the m weights is divided by the counted sum. The division is plain IEEE
 *      division: when nothing counted (a sum of 0, which needs a prune above the strongest
 *      decayed weight, e.g. complexityReduction·alpha near 1) the weights become NaN.
 *   3. no match: the component at position j = (m < N ? m : N − 1) becomes (x, varInit) with
 *      weight 1 when it is the only one, alpha otherwise; m = min(m + 1, N); weights below j
 *      are multiplied by decay; then for i = m − 1 down to 1, positions i − 1 and i are
 *      exchanged when the weight at i − 1 is ≤ alpha (every i is visited).
 *   4. mask: 0 if background; else with shadowDetection, over the components in order:
 *      D = |mean|², num = mean·x; D = 0 → 255; if D ≥ num ≥ shadowTau·D, a = num / D,
 *      e² = |fma(a, mean, −x)|² and (varThreshold·v)·(a·a) > e² → shadowValue; else the
 *      weights are summed and once the sum exceeds bgRatio, or the components run out, 255.
 *      Without shadowDetection: 255.
 * Checks, in order: null pSrc, pDst or pState → -8; srcStep or dstStep < 1 → -14; width or
 * height < 1, or roiSize different from the Init size → -6; pModel with numGauss outside
 * 1 .. the Init maximum → -5. Steps are only required to be positive (rows may overlap; they
 * are processed top to bottom). On any error neither pDst nor the state is written. The frame
 * counter stops at INT_MAX instead of wrapping. A mode count above numGauss (numGauss lowered
 * between calls) is cut to numGauss when the pixel next creates a component. */
RVPCV_API RvpStatus rvpiFGMMForeground_8u_C3R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst,
                                              int dstStep, RvpiSize roiSize, Rvp8u* pState,
                                              const RvpFGMModel* pModel, Rvp64f learningRate);

/* Renders the background into pDst (3 channels): per pixel, over its components in order,
 * sum fma(w_k, mean_k, acc) per channel and the weights, stopping after the first component at
 * which the summed weight exceeds bgRatio; the value is acc / (summed weight) rounded to
 * nearest (ties to even) and saturated to 0..255, a NaN (zero weight) giving 0. A pixel with
 * no components is written 0 in all three channels.
 * Checks, in order: null pDst or pState → -8; dstStep < 1 → -14; width or height < 1, or
 * roiSize different from the Init size → -6. The state is only read, so several threads may
 * render from one state as long as none runs rvpiFGMMForeground_8u_C3R on it meanwhile. */
RVPCV_API RvpStatus rvpiFGMMBackground_8u_C3R(Rvp8u* pDst, int dstStep, RvpiSize roiSize,
                                              const Rvp8u* pState);



#ifdef __cplusplus
}
#endif

#endif /* RVPCV_H */
