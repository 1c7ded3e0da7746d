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
/* ---- Border selector acceptance --------------------------------------------------------
 * Base rules and side flags are those of RvpiBorderType. Families accept different selectors:
 *   row pipeline: exactly 0, 1 or 6 (no flags), otherwise -5;
 *   Sobel, Scharr, Laplacian, Lowpass: base 0, 1, 2, 3, 4 or 6; bits above the low four only
 *     together with at least one side flag; otherwise -5;
 *   Gaussian: the selector with the side flags removed must be 0, 1 or 6, otherwise -225.
 * 6 means all four sides in memory (the same as 0xF0). A side whose flag is set reads the
 * caller's pixels beyond the region; the other sides follow the base rule. Rows and columns
 * map independently: a bordered pixel whose row or column falls on a constant side is the
 * border value; otherwise its row index and column index are each mapped (kept when in memory,
 * clamped for 1, wrapped for 2, reflected for 3 and 4, periodically for borders wider than the
 * region; base 3 on a line of one pixel repeats it).
 *
 * ---- Row/column pipeline -----------------------------------------------------------------
 * Row filter: dst[y][x] = sum_k B_y(x + k - xAnchor) * pKernel[k] (correlation), B_y the source
 * row extended by xAnchor pixels on the left and kernelSize-1-xAnchor on the right (border 0:
 * borderValue, 1: edge pixel, 6: the caller's pixels beyond the region). ppDst holds
 * roiSize.height row pointers of width*channels elements each.
 * Checks: pSrc, ppDst, pKernel, pBuffer null -8; size -6; a null ppDst[y] -8; (C3) null
 * borderValue pointer -8 (all C3 forms, also when the border is not constant); kernelSize < 1
 * -6; xAnchor outside 0..kernelSize-1 -34; srcStep -14/-108; borderType not 0, 1 or 6 -5;
 * divisor 0 (16s, 8u16s, Low_16s) or below 1 (16u) -5.
 * Arithmetic:
 *   16s, 8u16s: the products and their sum are exact 32-bit integers when the sum of |taps| is
 *     below 65535, otherwise single-precision products summed in single precision in tap
 *     order; the sum times the single-precision 1/divisor is rounded half to even and
 *     saturated. Columns outside the whole blocks of 8 that start at xAnchor (the first
 *     xAnchor columns and the remainder of fewer than 8 at the row end) are truncated toward
 *     zero instead of rounded.
 *   16u (Rvp16s taps): exact integer sum, converted to single precision, times 1/divisor,
 *     rounded half to even in every column, saturated to 0..65535.
 *   Low_16s: products and sum in 16-bit wrap-around arithmetic; result (sum * M) >> 14 at 32
 *     bits with M = trunc(16384 / divisor) formed in single precision, saturated.
 *   32f: single-precision products summed in single precision in tap order (no fused
 *     multiply-add).
 * pBuffer: at least the queried size, any alignment; it is not written by these forms.
 *
 * Column filter: dst[y][x] = sum_k ppSrc[y + k][x] * pKernel[k]; ppSrc holds
 * roiSize.height + kernelSize - 1 row pointers.
 * Checks: ppSrc, pDst, pKernel null -8; size -6; a null ppSrc[0..height+kernelSize-2] -8;
 * kernelSize < 1 -6; dstStep -14/-108; pBuffer null -8; divisor 0 -5.
 * Arithmetic: every tap is scaled by the single-precision 1/divisor first (single precision),
 * the scaled products are summed in single precision in tap order, rounded half to even and
 * saturated to the destination (16s, 16s8u, 16s8s, 16u; 16u takes Rvp16s taps and any nonzero
 * divisor, a negative one saturating to 0). Low_16s: 16-bit wrap-around sum, then as in the
 * row filter. 32f: plain single-precision sum of products.
 *
 * GetBufferSize (roiSize, kernelSize, pBufferSize): pBufferSize null -8; size -6;
 * kernelSize < 1 -6; a size that does not fit 32 bits -6. */
RVPCV_API RvpStatus rvpiFilterRowBorderPipeline_8u16s_C1R(const Rvp8u* pSrc, int srcStep,
    Rvp16s** ppDst, RvpiSize roiSize, const Rvp16s* pKernel, int kernelSize, int xAnchor,
    RvpiBorderType borderType, Rvp8u borderValue, int divisor, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterRowBorderPipeline_8u16s_C3R(const Rvp8u* pSrc, int srcStep,
    Rvp16s** ppDst, RvpiSize roiSize, const Rvp16s* pKernel, int kernelSize, int xAnchor,
    RvpiBorderType borderType, const Rvp8u borderValue[3], int divisor, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterRowBorderPipeline_16s_C1R(const Rvp16s* pSrc, int srcStep,
    Rvp16s** ppDst, RvpiSize roiSize, const Rvp16s* pKernel, int kernelSize, int xAnchor,
    RvpiBorderType borderType, Rvp16s borderValue, int divisor, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterRowBorderPipeline_16s_C3R(const Rvp16s* pSrc, int srcStep,
    Rvp16s** ppDst, RvpiSize roiSize, const Rvp16s* pKernel, int kernelSize, int xAnchor,
    RvpiBorderType borderType, const Rvp16s borderValue[3], int divisor, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterRowBorderPipeline_16u_C1R(const Rvp16u* pSrc, int srcStep,
    Rvp16u** ppDst, RvpiSize roiSize, const Rvp16s* pKernel, int kernelSize, int xAnchor,
    RvpiBorderType borderType, Rvp16u borderValue, int divisor, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterRowBorderPipeline_16u_C3R(const Rvp16u* pSrc, int srcStep,
    Rvp16u** ppDst, RvpiSize roiSize, const Rvp16s* pKernel, int kernelSize, int xAnchor,
    RvpiBorderType borderType, const Rvp16u borderValue[3], int divisor, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterRowBorderPipeline_32f_C1R(const Rvp32f* pSrc, int srcStep,
    Rvp32f** ppDst, RvpiSize roiSize, const Rvp32f* pKernel, int kernelSize, int xAnchor,
    RvpiBorderType borderType, Rvp32f borderValue, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterRowBorderPipeline_32f_C3R(const Rvp32f* pSrc, int srcStep,
    Rvp32f** ppDst, RvpiSize roiSize, const Rvp32f* pKernel, int kernelSize, int xAnchor,
    RvpiBorderType borderType, const Rvp32f borderValue[3], Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterRowBorderPipeline_Low_16s_C1R(const Rvp16s* pSrc, int srcStep,
    Rvp16s** ppDst, RvpiSize roiSize, const Rvp16s* pKernel, int kernelSize, int xAnchor,
    RvpiBorderType borderType, Rvp16s borderValue, int divisor, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterRowBorderPipeline_Low_16s_C3R(const Rvp16s* pSrc, int srcStep,
    Rvp16s** ppDst, RvpiSize roiSize, const Rvp16s* pKernel, int kernelSize, int xAnchor,
    RvpiBorderType borderType, const Rvp16s borderValue[3], int divisor, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterColumnPipeline_16s_C1R(const Rvp16s* const* ppSrc,
    Rvp16s* pDst, int dstStep, RvpiSize roiSize, const Rvp16s* pKernel, int kernelSize, int divisor,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterColumnPipeline_16s_C3R(const Rvp16s* const* ppSrc,
    Rvp16s* pDst, int dstStep, RvpiSize roiSize, const Rvp16s* pKernel, int kernelSize, int divisor,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterColumnPipeline_16s8u_C1R(const Rvp16s* const* ppSrc,
    Rvp8u* pDst, int dstStep, RvpiSize roiSize, const Rvp16s* pKernel, int kernelSize, int divisor,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterColumnPipeline_16s8u_C3R(const Rvp16s* const* ppSrc,
    Rvp8u* pDst, int dstStep, RvpiSize roiSize, const Rvp16s* pKernel, int kernelSize, int divisor,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterColumnPipeline_16s8s_C1R(const Rvp16s* const* ppSrc,
    Rvp8s* pDst, int dstStep, RvpiSize roiSize, const Rvp16s* pKernel, int kernelSize, int divisor,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterColumnPipeline_16s8s_C3R(const Rvp16s* const* ppSrc,
    Rvp8s* pDst, int dstStep, RvpiSize roiSize, const Rvp16s* pKernel, int kernelSize, int divisor,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterColumnPipeline_16u_C1R(const Rvp16u* const* ppSrc,
    Rvp16u* pDst, int dstStep, RvpiSize roiSize, const Rvp16s* pKernel, int kernelSize, int divisor,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterColumnPipeline_16u_C3R(const Rvp16u* const* ppSrc,
    Rvp16u* pDst, int dstStep, RvpiSize roiSize, const Rvp16s* pKernel, int kernelSize, int divisor,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterColumnPipeline_32f_C1R(const Rvp32f* const* ppSrc,
    Rvp32f* pDst, int dstStep, RvpiSize roiSize, const Rvp32f* pKernel, int kernelSize,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterColumnPipeline_32f_C3R(const Rvp32f* const* ppSrc,
    Rvp32f* pDst, int dstStep, RvpiSize roiSize, const Rvp32f* pKernel, int kernelSize,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterColumnPipeline_Low_16s_C1R(const Rvp16s* const* ppSrc,
    Rvp16s* pDst, int dstStep, RvpiSize roiSize, const Rvp16s* pKernel, int kernelSize, int divisor,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterColumnPipeline_Low_16s_C3R(const Rvp16s* const* ppSrc,
    Rvp16s* pDst, int dstStep, RvpiSize roiSize, const Rvp16s* pKernel, int kernelSize, int divisor,
    Rvp8u* pBuffer);
/* Row sizes (K = kernelSize): 16s C1 48K+112, C3 40K+96; 16u C1 64K+96, C3 128K+96; 32f C1
 * 96K+96, C3 288K+96; 8u16s C1 32(K+K/4)+2K+66, C3 60K+144; Low_16s C1 24K+96, C3 208K+96.
 * Column sizes (W = roi width, R4/R8 rounded up to a multiple of 4/8): 16s, 16s8u, 16s8s C1
 * 12R4(W)+64, C3 36R4(W)+64; 16u C1 4(2R4(W)+8K)+64, C3 4(2R4(3W)+8K)+64; 32f 32K+32;
 * Low_16s C1 12R8(W)+64, C3 36R8(W)+64. */
RVPCV_API RvpStatus rvpiFilterRowBorderPipelineGetBufferSize_8u16s_C1R(RvpiSize roiSize,
    int kernelSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterRowBorderPipelineGetBufferSize_8u16s_C3R(RvpiSize roiSize,
    int kernelSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterRowBorderPipelineGetBufferSize_16s_C1R(RvpiSize roiSize,
    int kernelSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterRowBorderPipelineGetBufferSize_16s_C3R(RvpiSize roiSize,
    int kernelSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterRowBorderPipelineGetBufferSize_16u_C1R(RvpiSize roiSize,
    int kernelSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterRowBorderPipelineGetBufferSize_16u_C3R(RvpiSize roiSize,
    int kernelSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterRowBorderPipelineGetBufferSize_32f_C1R(RvpiSize roiSize,
    int kernelSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterRowBorderPipelineGetBufferSize_32f_C3R(RvpiSize roiSize,
    int kernelSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterRowBorderPipelineGetBufferSize_Low_16s_C1R(RvpiSize roiSize,
    int kernelSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterRowBorderPipelineGetBufferSize_Low_16s_C3R(RvpiSize roiSize,
    int kernelSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterColumnPipelineGetBufferSize_16s_C1R(RvpiSize roiSize,
    int kernelSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterColumnPipelineGetBufferSize_16s_C3R(RvpiSize roiSize,
    int kernelSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterColumnPipelineGetBufferSize_16s8u_C1R(RvpiSize roiSize,
    int kernelSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterColumnPipelineGetBufferSize_16s8u_C3R(RvpiSize roiSize,
    int kernelSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterColumnPipelineGetBufferSize_16s8s_C1R(RvpiSize roiSize,
    int kernelSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterColumnPipelineGetBufferSize_16s8s_C3R(RvpiSize roiSize,
    int kernelSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterColumnPipelineGetBufferSize_16u_C1R(RvpiSize roiSize,
    int kernelSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterColumnPipelineGetBufferSize_16u_C3R(RvpiSize roiSize,
    int kernelSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterColumnPipelineGetBufferSize_32f_C1R(RvpiSize roiSize,
    int kernelSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterColumnPipelineGetBufferSize_32f_C3R(RvpiSize roiSize,
    int kernelSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterColumnPipelineGetBufferSize_Low_16s_C1R(RvpiSize roiSize,
    int kernelSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterColumnPipelineGetBufferSize_Low_16s_C3R(RvpiSize roiSize,
    int kernelSize, int* pBufferSize);
/* ---- Fixed-kernel filters with border ---------------------------------------------------
 * rvpiFilter<Name>Border_<t>_C1R (pSrc, srcStep, pDst, dstStep, roiSize, mask, borderType,
 * borderValue, pBuffer); Scharr has no mask (3x3 only). mask: 33 (3x3) or 55 (5x5).
 * Checks: pSrc, pDst, pBuffer null -8; size -6; steps -14 then -108 (source and destination);
 * border selector (see above; Lowpass follows the derivative rule) -5; mask -33.
 * Kernels (horizontal factor along the row, vertical factor down the column, correlation):
 *   SobelNegVert      3: 1 0 -1  x 1 2 1            5: 1 2 0 -2 -1 x 1 4 6 4 1
 *   SobelHorizSecond  3: 1 2 1   x 1 -2 1           5: 1 4 6 4 1   x 1 0 -2 0 1
 *   SobelVertSecond   3: 1 -2 1  x 1 2 1            5: 1 0 -2 0 1  x 1 4 6 4 1
 *   SobelCross        3: 1 0 -1  x -1 0 1           5: 1 2 0 -2 -1 x -1 -2 0 2 1
 *   ScharrHoriz       3 10 3 x -1 0 1;  ScharrVert -1 0 1 x 3 10 3
 *   SobelHoriz (8u8s) 3: 1 2 1   x -1 0 1           5: 1 4 6 4 1   x -1 -2 0 2 1
 *     (vertical first derivative, bottom minus top)
 *   SobelVert (8u8s)  3: -1 0 1  x 1 2 1            5: -1 -2 0 2 1 x 1 4 6 4 1
 *     (horizontal first derivative, right minus left)
 *   Laplacian         sum of (second-difference x smoothing) + (smoothing x second-difference):
 *                     3: (1 -2 1 x 1 2 1) + (1 2 1 x 1 -2 1) = [2 0 2; 0 -8 0; 2 0 2]
 *                     5: (1 0 -2 0 1 x 1 4 6 4 1) + (1 4 6 4 1 x 1 0 -2 0 1)
 *   Lowpass           all ones; the mean: the sum times 1/9 or 1/25.
 * Results:
 *   8u16s: the exact integer result, saturated to Rvp16s.
 *   8u8s: the exact integer result times the single-precision reciprocal of D, rounded half to
 *     even, saturated to Rvp8s, with D the sum of the absolute values of the 2-D kernel (8 for
 *     3x3 Sobel first derivatives, 96 for 5x5, 16 / 64 for second derivatives, 4 / 36 for the
 *     cross derivative, 32 for Scharr, 16 / 112 for the Laplacian): the full input range maps
 *     onto -127.5..127.5.
 *   8u (Lowpass): exact box sum times the single-precision 1/9 or 1/25, rounded half to even.
 *   32f: row pass then column pass in single precision; products with zero taps are left out
 *     and the others summed in tap order (no fused multiply-add); the Laplacian's two column
 *     sums form one running sum, first term first; Lowpass multiplies the sum by the
 *     single-precision 1/9 or 1/25.
 * GetBufferSize (roiSize, mask, pBufferSize) (Scharr: roiSize, pBufferSize): pBufferSize null
 * -8; size -6; mask -33; a size beyond 32 bits -6. The size is
 * 64 + R32((W + K - 1) * sizeof(src)) + terms * K * R32(W * sizeof(intermediate)), K = 3 or 5,
 * terms 2 for the Laplacian and 1 otherwise, intermediate Rvp16s for 8u sources and Rvp32f for
 * 32f, R32 rounding up to a multiple of 32. */
RVPCV_API RvpStatus rvpiFilterSobelNegVertBorder_32f_C1R(const Rvp32f* pSrc, int srcStep,
    Rvp32f* pDst, int dstStep, RvpiSize roiSize, int mask, RvpiBorderType borderType,
    Rvp32f borderValue, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterSobelNegVertGetBufferSize_32f_C1R(RvpiSize roiSize, int mask,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterSobelNegVertBorder_8u16s_C1R(const Rvp8u* pSrc, int srcStep,
    Rvp16s* pDst, int dstStep, RvpiSize roiSize, int mask, RvpiBorderType borderType,
    Rvp8u borderValue, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterSobelNegVertGetBufferSize_8u16s_C1R(RvpiSize roiSize, int mask,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterSobelNegVertBorder_8u8s_C1R(const Rvp8u* pSrc, int srcStep,
    Rvp8s* pDst, int dstStep, RvpiSize roiSize, int mask, RvpiBorderType borderType,
    Rvp8u borderValue, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterSobelNegVertGetBufferSize_8u8s_C1R(RvpiSize roiSize, int mask,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterSobelHorizSecondBorder_32f_C1R(const Rvp32f* pSrc, int srcStep,
    Rvp32f* pDst, int dstStep, RvpiSize roiSize, int mask, RvpiBorderType borderType,
    Rvp32f borderValue, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterSobelHorizSecondGetBufferSize_32f_C1R(RvpiSize roiSize, int mask,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterSobelHorizSecondBorder_8u16s_C1R(const Rvp8u* pSrc, int srcStep,
    Rvp16s* pDst, int dstStep, RvpiSize roiSize, int mask, RvpiBorderType borderType,
    Rvp8u borderValue, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterSobelHorizSecondGetBufferSize_8u16s_C1R(RvpiSize roiSize, int mask,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterSobelHorizSecondBorder_8u8s_C1R(const Rvp8u* pSrc, int srcStep,
    Rvp8s* pDst, int dstStep, RvpiSize roiSize, int mask, RvpiBorderType borderType,
    Rvp8u borderValue, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterSobelHorizSecondGetBufferSize_8u8s_C1R(RvpiSize roiSize, int mask,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterSobelVertSecondBorder_32f_C1R(const Rvp32f* pSrc, int srcStep,
    Rvp32f* pDst, int dstStep, RvpiSize roiSize, int mask, RvpiBorderType borderType,
    Rvp32f borderValue, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterSobelVertSecondGetBufferSize_32f_C1R(RvpiSize roiSize, int mask,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterSobelVertSecondBorder_8u16s_C1R(const Rvp8u* pSrc, int srcStep,
    Rvp16s* pDst, int dstStep, RvpiSize roiSize, int mask, RvpiBorderType borderType,
    Rvp8u borderValue, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterSobelVertSecondGetBufferSize_8u16s_C1R(RvpiSize roiSize, int mask,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterSobelVertSecondBorder_8u8s_C1R(const Rvp8u* pSrc, int srcStep,
    Rvp8s* pDst, int dstStep, RvpiSize roiSize, int mask, RvpiBorderType borderType,
    Rvp8u borderValue, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterSobelVertSecondGetBufferSize_8u8s_C1R(RvpiSize roiSize, int mask,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterSobelCrossBorder_32f_C1R(const Rvp32f* pSrc, int srcStep,
    Rvp32f* pDst, int dstStep, RvpiSize roiSize, int mask, RvpiBorderType borderType,
    Rvp32f borderValue, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterSobelCrossGetBufferSize_32f_C1R(RvpiSize roiSize, int mask,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterSobelCrossBorder_8u16s_C1R(const Rvp8u* pSrc, int srcStep,
    Rvp16s* pDst, int dstStep, RvpiSize roiSize, int mask, RvpiBorderType borderType,
    Rvp8u borderValue, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterSobelCrossGetBufferSize_8u16s_C1R(RvpiSize roiSize, int mask,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterSobelCrossBorder_8u8s_C1R(const Rvp8u* pSrc, int srcStep,
    Rvp8s* pDst, int dstStep, RvpiSize roiSize, int mask, RvpiBorderType borderType,
    Rvp8u borderValue, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterSobelCrossGetBufferSize_8u8s_C1R(RvpiSize roiSize, int mask,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterLaplacianBorder_32f_C1R(const Rvp32f* pSrc, int srcStep,
    Rvp32f* pDst, int dstStep, RvpiSize roiSize, int mask, RvpiBorderType borderType,
    Rvp32f borderValue, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterLaplacianGetBufferSize_32f_C1R(RvpiSize roiSize, int mask,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterLaplacianBorder_8u16s_C1R(const Rvp8u* pSrc, int srcStep,
    Rvp16s* pDst, int dstStep, RvpiSize roiSize, int mask, RvpiBorderType borderType,
    Rvp8u borderValue, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterLaplacianGetBufferSize_8u16s_C1R(RvpiSize roiSize, int mask,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterLaplacianBorder_8u8s_C1R(const Rvp8u* pSrc, int srcStep,
    Rvp8s* pDst, int dstStep, RvpiSize roiSize, int mask, RvpiBorderType borderType,
    Rvp8u borderValue, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterLaplacianGetBufferSize_8u8s_C1R(RvpiSize roiSize, int mask,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterSobelHorizBorder_8u8s_C1R(const Rvp8u* pSrc, int srcStep,
    Rvp8s* pDst, int dstStep, RvpiSize roiSize, int mask, RvpiBorderType borderType,
    Rvp8u borderValue, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterSobelHorizGetBufferSize_8u8s_C1R(RvpiSize roiSize, int mask,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterSobelVertBorder_8u8s_C1R(const Rvp8u* pSrc, int srcStep,
    Rvp8s* pDst, int dstStep, RvpiSize roiSize, int mask, RvpiBorderType borderType,
    Rvp8u borderValue, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterSobelVertGetBufferSize_8u8s_C1R(RvpiSize roiSize, int mask,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterScharrHorizBorder_32f_C1R(const Rvp32f* pSrc, int srcStep,
    Rvp32f* pDst, int dstStep, RvpiSize roiSize, RvpiBorderType borderType,
    Rvp32f borderValue, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterScharrHorizGetBufferSize_32f_C1R(RvpiSize roiSize,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterScharrHorizBorder_8u16s_C1R(const Rvp8u* pSrc, int srcStep,
    Rvp16s* pDst, int dstStep, RvpiSize roiSize, RvpiBorderType borderType,
    Rvp8u borderValue, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterScharrHorizGetBufferSize_8u16s_C1R(RvpiSize roiSize,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterScharrHorizBorder_8u8s_C1R(const Rvp8u* pSrc, int srcStep,
    Rvp8s* pDst, int dstStep, RvpiSize roiSize, RvpiBorderType borderType,
    Rvp8u borderValue, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterScharrHorizGetBufferSize_8u8s_C1R(RvpiSize roiSize,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterScharrVertBorder_32f_C1R(const Rvp32f* pSrc, int srcStep,
    Rvp32f* pDst, int dstStep, RvpiSize roiSize, RvpiBorderType borderType,
    Rvp32f borderValue, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterScharrVertGetBufferSize_32f_C1R(RvpiSize roiSize,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterScharrVertBorder_8u16s_C1R(const Rvp8u* pSrc, int srcStep,
    Rvp16s* pDst, int dstStep, RvpiSize roiSize, RvpiBorderType borderType,
    Rvp8u borderValue, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterScharrVertGetBufferSize_8u16s_C1R(RvpiSize roiSize,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterScharrVertBorder_8u8s_C1R(const Rvp8u* pSrc, int srcStep,
    Rvp8s* pDst, int dstStep, RvpiSize roiSize, RvpiBorderType borderType,
    Rvp8u borderValue, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterScharrVertGetBufferSize_8u8s_C1R(RvpiSize roiSize,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterLowpassBorder_32f_C1R(const Rvp32f* pSrc, int srcStep,
    Rvp32f* pDst, int dstStep, RvpiSize roiSize, int mask, RvpiBorderType borderType,
    Rvp32f borderValue, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterLowpassGetBufferSize_32f_C1R(RvpiSize roiSize, int mask,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterLowpassBorder_8u_C1R(const Rvp8u* pSrc, int srcStep,
    Rvp8u* pDst, int dstStep, RvpiSize roiSize, int mask, RvpiBorderType borderType,
    Rvp8u borderValue, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterLowpassGetBufferSize_8u_C1R(RvpiSize roiSize, int mask,
    int* pBufferSize);
/* ---- Gaussian filter ---------------------------------------------------------------------
 * rvpiFilterGaussianGetBufferSize (roiSize, kernelSize, dataType, numChannels, pSpecSize,
 * pBufferSize): pSpecSize or pBufferSize null -8; size -6; kernelSize < 3 or even -5; dataType
 * not 1, 5, 7, 13 -12; numChannels not 1 or 3 -47. The specification takes 32 * kernelSize + 32
 * bytes for every data type; the work buffer 64 + R32(4K) + R32(X) + R32((W + K - 1) * ch *
 * sizeof(T)) + K * R32(W * ch * sizeof(I)) with X = 2 * (W + K - 1) * ch for 8u and 0
 * otherwise, I Rvp16s for 8u, Rvp32s for 16u/16s, Rvp32f for 32f (R32: up to a multiple of
 * 32). A work buffer serves one call at a time.
 * rvpiFilterGaussianInit (roiSize, kernelSize, sigma, borderType, dataType, numChannels, pSpec,
 * pBuffer): pSpec or pBuffer null -8; size -6; kernelSize -5; dataType -12; numChannels -47;
 * sigma not above 0 (NaN included) -5; borderType with the side flags removed not 0, 1 or 6
 * -225. Weights w_i = exp(-i*i/(2 sigma^2)) (exponent in single precision, exponential in
 * double, stored as single), S their single-precision sum in order; taps: 8u
 * trunc(w_i/S*4096 + 0.5) (shift 12), 16u/16s trunc(w_i/S*32768 + 0.5) (shift 15), 32f w_i/S.
 * pBuffer is not written. The specification is read-only afterwards and may be shared.
 * rvpiFilterGaussianBorder_<t>_<C> (pSrc, srcStep, pDst, dstStep, roiSize, borderValue, pSpec,
 * pBuffer): borderValue is one value (C1) or a pointer to three (C3). Checks: pSrc, pDst,
 * (C3) borderValue, pSpec, pBuffer null -8; size -6; steps -14/-108; a specification not made
 * by rvpiFilterGaussianInit for this data type and channel count -17; roiSize.width above the
 * width the specification was made for -6. The border (0 constant, 1 replicate, 6 memory, and
 * side flags) comes from the specification.
 * Integer rounding: the row pass sums exact integer products and drops 8 fraction bits
 * rounding half up ((sum + 128) >> 8); the column pass sums the exact products of those values
 * and drops the remaining 2*shift - 8 bits rounding half up (arithmetic shift, so halves of
 * negative 16s values round toward +infinity), then saturates. 32f: products summed in
 * single precision in tap order, row pass then column pass, no fused multiply-add.
 * rvpiFilterGaussBorder_32f_C1R (pSrc, srcStep, pDst, dstStep, roiSize, kernelSize, sigma,
 * borderType, borderValue, pBuffer): the same kernel as a 32f specification; checks: null -8,
 * size -6, steps, kernelSize -5, sigma -5, border -225. Its size query
 * rvpiFilterGaussGetBufferSize_32f_C1R (roiSize, kernelSize, pBufferSize): null -8, size -6,
 * kernelSize -5. */
RVPCV_API RvpStatus rvpiFilterGaussianGetBufferSize(RvpiSize roiSize, int kernelSize,
    RvpDataType dataType, int numChannels, int* pSpecSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterGaussianInit(RvpiSize roiSize, int kernelSize, Rvp32f sigma,
    RvpiBorderType borderType, RvpDataType dataType, int numChannels, Rvp8u* pSpec,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterGaussianBorder_8u_C1R(const Rvp8u* pSrc, int srcStep,
    Rvp8u* pDst, int dstStep, RvpiSize roiSize, Rvp8u borderValue, const Rvp8u* pSpec,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterGaussianBorder_8u_C3R(const Rvp8u* pSrc, int srcStep,
    Rvp8u* pDst, int dstStep, RvpiSize roiSize, const Rvp8u borderValue[3], const Rvp8u* pSpec,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterGaussianBorder_16u_C1R(const Rvp16u* pSrc, int srcStep,
    Rvp16u* pDst, int dstStep, RvpiSize roiSize, Rvp16u borderValue, const Rvp8u* pSpec,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterGaussianBorder_16u_C3R(const Rvp16u* pSrc, int srcStep,
    Rvp16u* pDst, int dstStep, RvpiSize roiSize, const Rvp16u borderValue[3], const Rvp8u* pSpec,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterGaussianBorder_16s_C1R(const Rvp16s* pSrc, int srcStep,
    Rvp16s* pDst, int dstStep, RvpiSize roiSize, Rvp16s borderValue, const Rvp8u* pSpec,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterGaussianBorder_16s_C3R(const Rvp16s* pSrc, int srcStep,
    Rvp16s* pDst, int dstStep, RvpiSize roiSize, const Rvp16s borderValue[3], const Rvp8u* pSpec,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterGaussianBorder_32f_C1R(const Rvp32f* pSrc, int srcStep,
    Rvp32f* pDst, int dstStep, RvpiSize roiSize, Rvp32f borderValue, const Rvp8u* pSpec,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterGaussianBorder_32f_C3R(const Rvp32f* pSrc, int srcStep,
    Rvp32f* pDst, int dstStep, RvpiSize roiSize, const Rvp32f borderValue[3], const Rvp8u* pSpec,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterGaussGetBufferSize_32f_C1R(RvpiSize roiSize, int kernelSize,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterGaussBorder_32f_C1R(const Rvp32f* pSrc, int srcStep, Rvp32f* pDst,
    int dstStep, RvpiSize roiSize, int kernelSize, Rvp32f sigma, RvpiBorderType borderType,
    Rvp32f borderValue, Rvp8u* pBuffer);
/* rvpiGenSobelKernel_16s / _32f (pDst, kernelSize, order, sign): writes kernelSize taps of the
 * one-dimensional Sobel factor of derivative `order` (0 smoothing, 1 first derivative right
 * minus left, 2 second derivative, ...): the product of (1 + z)^(kernelSize-1-order) and
 * (z - 1)^order, e.g. 3/1: -1 0 1, 3/2: 1 -2 1, 5/1: -1 -2 0 2 1, 5/0: 1 4 6 4 1. sign > 0 keeps
 * it, sign < 0 negates it. Checks: pDst null -8; kernelSize < 1 or even, order < 0 or
 * order >= kernelSize, sign 0: -5. Taps are exact integers; the 16s form saturates taps
 * beyond 16 bits (kernel sizes above 17). */
RVPCV_API RvpStatus rvpiGenSobelKernel_16s(Rvp16s* pDst, int kernelSize, int order, int sign);
RVPCV_API RvpStatus rvpiGenSobelKernel_32f(Rvp32f* pDst, int kernelSize, int order, int sign);

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
/* ---- Binary morphology -----------------------------------------------------------------
 * A structuring element is a block of maskSize.height rows of maskSize.width Rvp8u bytes (no
 * gaps); a nonzero byte is part of the element. Dilation is the maximum, erosion the minimum,
 * of the source over the nonzero positions placed with the anchor on the output pixel
 * (correlation: mask position (k, r) reads source pixel (x + k - anchor.x, y + r - anchor.y)).
 * Channels are independent. 8u, 16u and 1u compare unsigned, 16s signed, 32f as floats
 * (max(a, b) = a > b ? a : b; with NaN inputs the result depends on the processing kind).
 *
 * 1u images pack eight pixels a byte, the first pixel of a row in the most significant bit;
 * pSrc/pDst point to the byte holding pixel 0 of the region. Bits of the last byte of a row
 * beyond the region width are left as they were.
 *
 * The initialisation analyses the mask once and stores a copy of it, the ROI width and one of
 * four processing kinds: empty (all zero: the output is a copy of the source), rectangle
 * (separable, cost independent of the mask size), runs (one contiguous run per row, equal
 * lengths starting at the same column, anchor row among the nonzero rows), general (all other
 * masks). For 32f the runs kind needs a mask area of at least 17 (C3) or 49 (C4); smaller masks
 * use the general kind. All kinds give the same values.
 *
 * Border interface: rvpiMorphologyBorderGetSize_* (roiWidth, maskSize, pSpecSize, pBufferSize)
 * writes the state size (33*A + 16*mh + 160, 1u: 3*A + 96, A = mw*mh rounded up to 16) and the
 * work-buffer size; checks: null output -8, roiWidth or mask side < 1 -6.
 * rvpiMorphologyBorderInit_* (roiWidth, pMask, maskSize, pState, pBuffer) builds the state in
 * caller memory of at least the state size (any alignment); pBuffer is checked but not used.
 * The Border interface takes no anchor: it uses the mask centre ((mw-1)/2, (mh-1)/2).
 * Checks: pMask, pState, pBuffer null -8; roiWidth or mask side < 1 -6.
 * rvpiDilateBorder_* / rvpiErodeBorder_* (pSrc, srcStep, pDst, dstStep, roiSize, borderType,
 * borderValue, pState, pBuffer); C3/C4 take borderValue as a pointer to 3 or 4 values (checked
 * for null, otherwise unused: no accepted border reads it). Border: low four bits 1 (replicate;
 * the flags 0x10 top, 0x20 bottom, 0x40 left, 0x80 right read those sides from the caller's
 * memory) or 6 (all sides in memory). pBuffer: at least the queried work size, any alignment.
 * Checks, in order: pSrc, pDst, (C3/C4) borderValue, pState, pBuffer null -8; roi < 1 -6;
 * srcStep or dstStep < roiSize.width -14 (compared with the width in elements, also for C3/C4
 * and 1u, deliberately); border base not 1 or 6 -225; roiSize.width above the state's width
 * -6; a state of another type, channel count or interface -17; (1u, 16u, 16s) pSrc == pDst
 * -9997. 8u and 32f may run in place (pSrc == pDst with equal steps; other overlaps of source
 * and destination are not supported). The state is only read: one state may serve concurrent
 * calls with different work buffers. Borders 1 with side flags and 6 read up to the mask's
 * extent beyond the region on the flagged sides: that memory must exist. An output larger
 * than both 2 MiB and the largest cache is written with cache-bypassing stores and a fence.
 *
 * Older interface (8u, 32f; C1, C3, C4): rvpiMorphologyGetSize_* (roiWidth, pMask, maskSize,
 * pSize) writes one size, the state with its work area (33*A + 16*mh + 160 + work area; an
 * all-zero mask needs A + 96); rvpiMorphologyInit_* (roiWidth, pMask, maskSize, anchor,
 * pState); rvpiMorphologyInitAlloc_* (..., anchor, ppState) allocates with rvpMalloc (-9 when it
 * fails; *ppState is written only on success); rvpiMorphologyFree releases it (null is
 * ignored). Checks: pMask null -8; roiWidth or mask side < 1 -6; anchor outside the mask -34;
 * null pSize / pState / ppState -8. rvpiDilateBorderReplicate_* / rvpiErodeBorderReplicate_*
 * (pSrc, srcStep, pDst, dstStep, roiSize, borderType, pState) use that state and its anchor;
 * borderType must be exactly 1 (-225). The work area lives inside the state, so such a state
 * serves one call at a time. Other checks as for the Border forms.
 *
 * Rectangle filters (8u, 32f; C1, C3, C4): rvpiFilterMaxBorderReplicate_* /
 * rvpiFilterMinBorderReplicate_* (pSrc, srcStep, pDst, dstStep, roiSize, maskSize, anchor,
 * pBuffer): maximum / minimum over the maskSize rectangle placed at anchor, replicated border.
 * Checks: pSrc, pDst, pBuffer null -8; roi -6; steps -14 (row width in bytes), -108 (32f);
 * mask side < 1 -33; anchor outside the mask -34. In place as for the Border forms. rvpiFilterMaxGetBufferSize_* and
 * rvpiFilterMinGetBufferSize_* (roiWidth, maskSize, pBufferSize) are the same function:
 * mh*2*(W*c*e + 32) + 32 + mh*32 bytes (e the element size), or more when the mask is wider
 * than roiWidth + 1; null -8, roiWidth < 1 -6, mask side < 1 -33.
 * The work-buffer size of the state interfaces is the larger of that and the row-block area
 * (mh*s + 1)*(W*c*e + 32) + 40 + mh*40, plus 24*s and 16*s + 64 (each rounded up to 16) and A,
 * where s, the rows per block, is the smallest value (at least 1) for which the row-block area
 * holds the mh + 2 bordered rows the processing uses. */
typedef struct RvpiMorphState RvpiMorphState;

RVPCV_API RvpStatus rvpiMorphologyBorderGetSize_1u_C1R(int roiWidth, RvpiSize maskSize,
    int* pSpecSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiMorphologyBorderInit_1u_C1R(int roiWidth, const Rvp8u* pMask,
    RvpiSize maskSize, RvpiMorphState* pState, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiDilateBorder_1u_C1R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst,
    int dstStep, RvpiSize roiSize, RvpiBorderType borderType, Rvp8u borderValue,
    const RvpiMorphState* pState, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiErodeBorder_1u_C1R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst,
    int dstStep, RvpiSize roiSize, RvpiBorderType borderType, Rvp8u borderValue,
    const RvpiMorphState* pState, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiMorphologyBorderGetSize_8u_C1R(int roiWidth, RvpiSize maskSize,
    int* pSpecSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiMorphologyBorderInit_8u_C1R(int roiWidth, const Rvp8u* pMask,
    RvpiSize maskSize, RvpiMorphState* pState, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiDilateBorder_8u_C1R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst,
    int dstStep, RvpiSize roiSize, RvpiBorderType borderType, Rvp8u borderValue,
    const RvpiMorphState* pState, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiErodeBorder_8u_C1R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst,
    int dstStep, RvpiSize roiSize, RvpiBorderType borderType, Rvp8u borderValue,
    const RvpiMorphState* pState, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiMorphologyBorderGetSize_8u_C3R(int roiWidth, RvpiSize maskSize,
    int* pSpecSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiMorphologyBorderInit_8u_C3R(int roiWidth, const Rvp8u* pMask,
    RvpiSize maskSize, RvpiMorphState* pState, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiDilateBorder_8u_C3R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst,
    int dstStep, RvpiSize roiSize, RvpiBorderType borderType, const Rvp8u* borderValue,
    const RvpiMorphState* pState, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiErodeBorder_8u_C3R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst,
    int dstStep, RvpiSize roiSize, RvpiBorderType borderType, const Rvp8u* borderValue,
    const RvpiMorphState* pState, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiMorphologyBorderGetSize_8u_C4R(int roiWidth, RvpiSize maskSize,
    int* pSpecSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiMorphologyBorderInit_8u_C4R(int roiWidth, const Rvp8u* pMask,
    RvpiSize maskSize, RvpiMorphState* pState, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiDilateBorder_8u_C4R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst,
    int dstStep, RvpiSize roiSize, RvpiBorderType borderType, const Rvp8u* borderValue,
    const RvpiMorphState* pState, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiErodeBorder_8u_C4R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst,
    int dstStep, RvpiSize roiSize, RvpiBorderType borderType, const Rvp8u* borderValue,
    const RvpiMorphState* pState, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiMorphologyBorderGetSize_16u_C1R(int roiWidth, RvpiSize maskSize,
    int* pSpecSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiMorphologyBorderInit_16u_C1R(int roiWidth, const Rvp8u* pMask,
    RvpiSize maskSize, RvpiMorphState* pState, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiDilateBorder_16u_C1R(const Rvp16u* pSrc, int srcStep, Rvp16u* pDst,
    int dstStep, RvpiSize roiSize, RvpiBorderType borderType, Rvp16u borderValue,
    const RvpiMorphState* pState, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiErodeBorder_16u_C1R(const Rvp16u* pSrc, int srcStep, Rvp16u* pDst,
    int dstStep, RvpiSize roiSize, RvpiBorderType borderType, Rvp16u borderValue,
    const RvpiMorphState* pState, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiMorphologyBorderGetSize_16s_C1R(int roiWidth, RvpiSize maskSize,
    int* pSpecSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiMorphologyBorderInit_16s_C1R(int roiWidth, const Rvp8u* pMask,
    RvpiSize maskSize, RvpiMorphState* pState, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiDilateBorder_16s_C1R(const Rvp16s* pSrc, int srcStep, Rvp16s* pDst,
    int dstStep, RvpiSize roiSize, RvpiBorderType borderType, Rvp16s borderValue,
    const RvpiMorphState* pState, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiErodeBorder_16s_C1R(const Rvp16s* pSrc, int srcStep, Rvp16s* pDst,
    int dstStep, RvpiSize roiSize, RvpiBorderType borderType, Rvp16s borderValue,
    const RvpiMorphState* pState, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiMorphologyBorderGetSize_32f_C1R(int roiWidth, RvpiSize maskSize,
    int* pSpecSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiMorphologyBorderInit_32f_C1R(int roiWidth, const Rvp8u* pMask,
    RvpiSize maskSize, RvpiMorphState* pState, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiDilateBorder_32f_C1R(const Rvp32f* pSrc, int srcStep, Rvp32f* pDst,
    int dstStep, RvpiSize roiSize, RvpiBorderType borderType, Rvp32f borderValue,
    const RvpiMorphState* pState, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiErodeBorder_32f_C1R(const Rvp32f* pSrc, int srcStep, Rvp32f* pDst,
    int dstStep, RvpiSize roiSize, RvpiBorderType borderType, Rvp32f borderValue,
    const RvpiMorphState* pState, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiMorphologyBorderGetSize_32f_C3R(int roiWidth, RvpiSize maskSize,
    int* pSpecSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiMorphologyBorderInit_32f_C3R(int roiWidth, const Rvp8u* pMask,
    RvpiSize maskSize, RvpiMorphState* pState, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiDilateBorder_32f_C3R(const Rvp32f* pSrc, int srcStep, Rvp32f* pDst,
    int dstStep, RvpiSize roiSize, RvpiBorderType borderType, const Rvp32f* borderValue,
    const RvpiMorphState* pState, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiErodeBorder_32f_C3R(const Rvp32f* pSrc, int srcStep, Rvp32f* pDst,
    int dstStep, RvpiSize roiSize, RvpiBorderType borderType, const Rvp32f* borderValue,
    const RvpiMorphState* pState, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiMorphologyBorderGetSize_32f_C4R(int roiWidth, RvpiSize maskSize,
    int* pSpecSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiMorphologyBorderInit_32f_C4R(int roiWidth, const Rvp8u* pMask,
    RvpiSize maskSize, RvpiMorphState* pState, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiDilateBorder_32f_C4R(const Rvp32f* pSrc, int srcStep, Rvp32f* pDst,
    int dstStep, RvpiSize roiSize, RvpiBorderType borderType, const Rvp32f* borderValue,
    const RvpiMorphState* pState, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiErodeBorder_32f_C4R(const Rvp32f* pSrc, int srcStep, Rvp32f* pDst,
    int dstStep, RvpiSize roiSize, RvpiBorderType borderType, const Rvp32f* borderValue,
    const RvpiMorphState* pState, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiMorphologyGetSize_8u_C1R(int roiWidth, const Rvp8u* pMask,
    RvpiSize maskSize, int* pSize);
RVPCV_API RvpStatus rvpiMorphologyInit_8u_C1R(int roiWidth, const Rvp8u* pMask,
    RvpiSize maskSize, RvpiPoint anchor, RvpiMorphState* pState);
RVPCV_API RvpStatus rvpiMorphologyInitAlloc_8u_C1R(int roiWidth, const Rvp8u* pMask,
    RvpiSize maskSize, RvpiPoint anchor, RvpiMorphState** ppState);
RVPCV_API RvpStatus rvpiDilateBorderReplicate_8u_C1R(const Rvp8u* pSrc, int srcStep,
    Rvp8u* pDst, int dstStep, RvpiSize roiSize, RvpiBorderType borderType,
    RvpiMorphState* pState);
RVPCV_API RvpStatus rvpiErodeBorderReplicate_8u_C1R(const Rvp8u* pSrc, int srcStep,
    Rvp8u* pDst, int dstStep, RvpiSize roiSize, RvpiBorderType borderType,
    RvpiMorphState* pState);
RVPCV_API RvpStatus rvpiFilterMaxGetBufferSize_8u_C1R(int roiWidth, RvpiSize maskSize,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterMaxBorderReplicate_8u_C1R(const Rvp8u* pSrc, int srcStep,
    Rvp8u* pDst, int dstStep, RvpiSize roiSize, RvpiSize maskSize, RvpiPoint anchor,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterMinGetBufferSize_8u_C1R(int roiWidth, RvpiSize maskSize,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterMinBorderReplicate_8u_C1R(const Rvp8u* pSrc, int srcStep,
    Rvp8u* pDst, int dstStep, RvpiSize roiSize, RvpiSize maskSize, RvpiPoint anchor,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiMorphologyGetSize_8u_C3R(int roiWidth, const Rvp8u* pMask,
    RvpiSize maskSize, int* pSize);
RVPCV_API RvpStatus rvpiMorphologyInit_8u_C3R(int roiWidth, const Rvp8u* pMask,
    RvpiSize maskSize, RvpiPoint anchor, RvpiMorphState* pState);
RVPCV_API RvpStatus rvpiMorphologyInitAlloc_8u_C3R(int roiWidth, const Rvp8u* pMask,
    RvpiSize maskSize, RvpiPoint anchor, RvpiMorphState** ppState);
RVPCV_API RvpStatus rvpiDilateBorderReplicate_8u_C3R(const Rvp8u* pSrc, int srcStep,
    Rvp8u* pDst, int dstStep, RvpiSize roiSize, RvpiBorderType borderType,
    RvpiMorphState* pState);
RVPCV_API RvpStatus rvpiErodeBorderReplicate_8u_C3R(const Rvp8u* pSrc, int srcStep,
    Rvp8u* pDst, int dstStep, RvpiSize roiSize, RvpiBorderType borderType,
    RvpiMorphState* pState);
RVPCV_API RvpStatus rvpiFilterMaxGetBufferSize_8u_C3R(int roiWidth, RvpiSize maskSize,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterMaxBorderReplicate_8u_C3R(const Rvp8u* pSrc, int srcStep,
    Rvp8u* pDst, int dstStep, RvpiSize roiSize, RvpiSize maskSize, RvpiPoint anchor,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterMinGetBufferSize_8u_C3R(int roiWidth, RvpiSize maskSize,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterMinBorderReplicate_8u_C3R(const Rvp8u* pSrc, int srcStep,
    Rvp8u* pDst, int dstStep, RvpiSize roiSize, RvpiSize maskSize, RvpiPoint anchor,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiMorphologyGetSize_8u_C4R(int roiWidth, const Rvp8u* pMask,
    RvpiSize maskSize, int* pSize);
RVPCV_API RvpStatus rvpiMorphologyInit_8u_C4R(int roiWidth, const Rvp8u* pMask,
    RvpiSize maskSize, RvpiPoint anchor, RvpiMorphState* pState);
RVPCV_API RvpStatus rvpiMorphologyInitAlloc_8u_C4R(int roiWidth, const Rvp8u* pMask,
    RvpiSize maskSize, RvpiPoint anchor, RvpiMorphState** ppState);
RVPCV_API RvpStatus rvpiDilateBorderReplicate_8u_C4R(const Rvp8u* pSrc, int srcStep,
    Rvp8u* pDst, int dstStep, RvpiSize roiSize, RvpiBorderType borderType,
    RvpiMorphState* pState);
RVPCV_API RvpStatus rvpiErodeBorderReplicate_8u_C4R(const Rvp8u* pSrc, int srcStep,
    Rvp8u* pDst, int dstStep, RvpiSize roiSize, RvpiBorderType borderType,
    RvpiMorphState* pState);
RVPCV_API RvpStatus rvpiFilterMaxGetBufferSize_8u_C4R(int roiWidth, RvpiSize maskSize,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterMaxBorderReplicate_8u_C4R(const Rvp8u* pSrc, int srcStep,
    Rvp8u* pDst, int dstStep, RvpiSize roiSize, RvpiSize maskSize, RvpiPoint anchor,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterMinGetBufferSize_8u_C4R(int roiWidth, RvpiSize maskSize,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterMinBorderReplicate_8u_C4R(const Rvp8u* pSrc, int srcStep,
    Rvp8u* pDst, int dstStep, RvpiSize roiSize, RvpiSize maskSize, RvpiPoint anchor,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiMorphologyGetSize_32f_C1R(int roiWidth, const Rvp8u* pMask,
    RvpiSize maskSize, int* pSize);
RVPCV_API RvpStatus rvpiMorphologyInit_32f_C1R(int roiWidth, const Rvp8u* pMask,
    RvpiSize maskSize, RvpiPoint anchor, RvpiMorphState* pState);
RVPCV_API RvpStatus rvpiMorphologyInitAlloc_32f_C1R(int roiWidth, const Rvp8u* pMask,
    RvpiSize maskSize, RvpiPoint anchor, RvpiMorphState** ppState);
RVPCV_API RvpStatus rvpiDilateBorderReplicate_32f_C1R(const Rvp32f* pSrc, int srcStep,
    Rvp32f* pDst, int dstStep, RvpiSize roiSize, RvpiBorderType borderType,
    RvpiMorphState* pState);
RVPCV_API RvpStatus rvpiErodeBorderReplicate_32f_C1R(const Rvp32f* pSrc, int srcStep,
    Rvp32f* pDst, int dstStep, RvpiSize roiSize, RvpiBorderType borderType,
    RvpiMorphState* pState);
RVPCV_API RvpStatus rvpiFilterMaxGetBufferSize_32f_C1R(int roiWidth, RvpiSize maskSize,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterMaxBorderReplicate_32f_C1R(const Rvp32f* pSrc, int srcStep,
    Rvp32f* pDst, int dstStep, RvpiSize roiSize, RvpiSize maskSize, RvpiPoint anchor,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterMinGetBufferSize_32f_C1R(int roiWidth, RvpiSize maskSize,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterMinBorderReplicate_32f_C1R(const Rvp32f* pSrc, int srcStep,
    Rvp32f* pDst, int dstStep, RvpiSize roiSize, RvpiSize maskSize, RvpiPoint anchor,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiMorphologyGetSize_32f_C3R(int roiWidth, const Rvp8u* pMask,
    RvpiSize maskSize, int* pSize);
RVPCV_API RvpStatus rvpiMorphologyInit_32f_C3R(int roiWidth, const Rvp8u* pMask,
    RvpiSize maskSize, RvpiPoint anchor, RvpiMorphState* pState);
RVPCV_API RvpStatus rvpiMorphologyInitAlloc_32f_C3R(int roiWidth, const Rvp8u* pMask,
    RvpiSize maskSize, RvpiPoint anchor, RvpiMorphState** ppState);
RVPCV_API RvpStatus rvpiDilateBorderReplicate_32f_C3R(const Rvp32f* pSrc, int srcStep,
    Rvp32f* pDst, int dstStep, RvpiSize roiSize, RvpiBorderType borderType,
    RvpiMorphState* pState);
RVPCV_API RvpStatus rvpiErodeBorderReplicate_32f_C3R(const Rvp32f* pSrc, int srcStep,
    Rvp32f* pDst, int dstStep, RvpiSize roiSize, RvpiBorderType borderType,
    RvpiMorphState* pState);
RVPCV_API RvpStatus rvpiFilterMaxGetBufferSize_32f_C3R(int roiWidth, RvpiSize maskSize,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterMaxBorderReplicate_32f_C3R(const Rvp32f* pSrc, int srcStep,
    Rvp32f* pDst, int dstStep, RvpiSize roiSize, RvpiSize maskSize, RvpiPoint anchor,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterMinGetBufferSize_32f_C3R(int roiWidth, RvpiSize maskSize,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterMinBorderReplicate_32f_C3R(const Rvp32f* pSrc, int srcStep,
    Rvp32f* pDst, int dstStep, RvpiSize roiSize, RvpiSize maskSize, RvpiPoint anchor,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiMorphologyGetSize_32f_C4R(int roiWidth, const Rvp8u* pMask,
    RvpiSize maskSize, int* pSize);
RVPCV_API RvpStatus rvpiMorphologyInit_32f_C4R(int roiWidth, const Rvp8u* pMask,
    RvpiSize maskSize, RvpiPoint anchor, RvpiMorphState* pState);
RVPCV_API RvpStatus rvpiMorphologyInitAlloc_32f_C4R(int roiWidth, const Rvp8u* pMask,
    RvpiSize maskSize, RvpiPoint anchor, RvpiMorphState** ppState);
RVPCV_API RvpStatus rvpiDilateBorderReplicate_32f_C4R(const Rvp32f* pSrc, int srcStep,
    Rvp32f* pDst, int dstStep, RvpiSize roiSize, RvpiBorderType borderType,
    RvpiMorphState* pState);
RVPCV_API RvpStatus rvpiErodeBorderReplicate_32f_C4R(const Rvp32f* pSrc, int srcStep,
    Rvp32f* pDst, int dstStep, RvpiSize roiSize, RvpiBorderType borderType,
    RvpiMorphState* pState);
RVPCV_API RvpStatus rvpiFilterMaxGetBufferSize_32f_C4R(int roiWidth, RvpiSize maskSize,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterMaxBorderReplicate_32f_C4R(const Rvp32f* pSrc, int srcStep,
    Rvp32f* pDst, int dstStep, RvpiSize roiSize, RvpiSize maskSize, RvpiPoint anchor,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiFilterMinGetBufferSize_32f_C4R(int roiWidth, RvpiSize maskSize,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiFilterMinBorderReplicate_32f_C4R(const Rvp32f* pSrc, int srcStep,
    Rvp32f* pDst, int dstStep, RvpiSize roiSize, RvpiSize maskSize, RvpiPoint anchor,
    Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiMorphologyFree(RvpiMorphState* pState);
/* ---- Gray-level morphology (8u and 32f, C1) ---------------------------------------------
 * The structuring element holds values: Rvp32s for 8u, Rvp32f for 32f, maskSize.width *
 * maskSize.height of them in row order; every position takes part, zeros included. Mask
 * position (k, r) reads source pixel (x + k - anchor.x, y + r - anchor.y) (correlation).
 * rvpiGrayDilateBorder_*: max over the positions inside the ROI of (source + value);
 * rvpiGrayErodeBorder_*: min over them of (source - value) (erosion subtracts: the dual of
 * dilation). Positions outside the ROI are left out, so borderType only selects this rule.
 * 8u: exact integer sums (an extreme value saturates at the 32-bit range instead of wrapping),
 * result clamped to 0..255; 32f: single-precision sums. pSrc and pDst must not overlap.
 * rvpiMorphGrayGetSize_* (roiSize, pMask, maskSize, pSize): null -8; roi or mask side < 1 -6;
 * the size is 48 + 4 * mw * mh bytes.
 * rvpiMorphGrayInit_* (pState, roiSize, pMask, maskSize, anchor), rvpiMorphGrayInitAlloc_*
 * (ppState, roiSize, pMask, maskSize, anchor; rvpMalloc, -9 on failure, *ppState written only
 * on success), rvpiMorphGrayFree_* (pState; null ignored). Checks: pMask, pState (ppState)
 * null -8; roi or mask side < 1 -6; anchor outside the mask -33 (not -34).
 * rvpiGrayDilateBorder_* / rvpiGrayErodeBorder_* (pSrc, srcStep, pDst, dstStep, roiSize,
 * borderType, pState): pSrc, pDst, pState null -8; roi < 1 -6; srcStep or dstStep below
 * roiSize.width (in elements) -14; borderType other than 1 -5; roi wider or taller than the
 * state's ROI -6; a state of the other type -17. No vector path: the cost is
 * width * height * mask area. */
typedef struct RvpiMorphGrayState_8u RvpiMorphGrayState_8u;
typedef struct RvpiMorphGrayState_32f RvpiMorphGrayState_32f;
RVPCV_API RvpStatus rvpiMorphGrayGetSize_8u_C1R(RvpiSize roiSize, const Rvp32s* pMask,
    RvpiSize maskSize, int* pSize);
RVPCV_API RvpStatus rvpiMorphGrayGetSize_32f_C1R(RvpiSize roiSize, const Rvp32f* pMask,
    RvpiSize maskSize, int* pSize);
RVPCV_API RvpStatus rvpiMorphGrayInit_8u_C1R(RvpiMorphGrayState_8u* pState, RvpiSize roiSize,
    const Rvp32s* pMask, RvpiSize maskSize, RvpiPoint anchor);
RVPCV_API RvpStatus rvpiMorphGrayInit_32f_C1R(RvpiMorphGrayState_32f* pState, RvpiSize roiSize,
    const Rvp32f* pMask, RvpiSize maskSize, RvpiPoint anchor);
RVPCV_API RvpStatus rvpiMorphGrayInitAlloc_8u_C1R(RvpiMorphGrayState_8u** ppState,
    RvpiSize roiSize, const Rvp32s* pMask, RvpiSize maskSize, RvpiPoint anchor);
RVPCV_API RvpStatus rvpiMorphGrayInitAlloc_32f_C1R(RvpiMorphGrayState_32f** ppState,
    RvpiSize roiSize, const Rvp32f* pMask, RvpiSize maskSize, RvpiPoint anchor);
RVPCV_API RvpStatus rvpiMorphGrayFree_8u_C1R(RvpiMorphGrayState_8u* pState);
RVPCV_API RvpStatus rvpiMorphGrayFree_32f_C1R(RvpiMorphGrayState_32f* pState);
RVPCV_API RvpStatus rvpiGrayDilateBorder_8u_C1R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst,
    int dstStep, RvpiSize roiSize, RvpiBorderType borderType,
    const RvpiMorphGrayState_8u* pState);
RVPCV_API RvpStatus rvpiGrayErodeBorder_8u_C1R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst,
    int dstStep, RvpiSize roiSize, RvpiBorderType borderType,
    const RvpiMorphGrayState_8u* pState);
RVPCV_API RvpStatus rvpiGrayDilateBorder_32f_C1R(const Rvp32f* pSrc, int srcStep, Rvp32f* pDst,
    int dstStep, RvpiSize roiSize, RvpiBorderType borderType,
    const RvpiMorphGrayState_32f* pState);
RVPCV_API RvpStatus rvpiGrayErodeBorder_32f_C1R(const Rvp32f* pSrc, int srcStep, Rvp32f* pDst,
    int dstStep, RvpiSize roiSize, RvpiBorderType borderType,
    const RvpiMorphGrayState_32f* pState);


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
/* Zero source pixels are the features (distance 0); every nonzero pixel gets its distance to the
 * nearest zero pixel. Norm codes: 0 chessboard, 1 L1 (city block), 2 L2 (Euclidean).
 *
 * Chamfer weights: a 3x3 mask has two weights, a (horizontal or vertical step) and b (diagonal
 * step); a 5x5 mask has three, a, b and c (knight step (+-1, +-2) or (+-2, +-1)). */

/* Standard weights of a mask: kernelSize 3 writes a, b; 5 writes a, b, c.
 *   3x3: norm 0 -> 1, 1; norm 1 -> 1, 2; norm 2 -> 0.955, 1.3693 (32s: 2, 3)
 *   5x5: norm 0 -> 1, 1, 2; norm 1 -> 1, 2, 3; norm 2 -> 1, 1.4, 2.1969 (32s: 5, 7, 11)
 * Float values are the single-precision numbers nearest to the decimals. Checks: pMetrics null
 * -8; kernelSize not 3 or 5 -6; norm not 0, 1 or 2 -5. */
RVPCV_API RvpStatus rvpiGetDistanceTransformMask_32f(int kernelSize, int norm, Rvp32f* pMetrics);
RVPCV_API RvpStatus rvpiGetDistanceTransformMask_32s(int kernelSize, int norm, Rvp32s* pMetrics);
/* maskType = 10 * kernelSize + norm (30, 31, 32, 50, 51, 52): the 32f weights. A code whose last
 * decimal digit is not 0, 1 or 2 (negative codes included) is -5 before any other check; then
 * the checks of rvpiGetDistanceTransformMask_32f apply (so 42 is -6). */
RVPCV_API RvpStatus rvpiGetDistanceTransformMask(int maskType, Rvp32f* pMetrics);

/* Chamfer transforms: two raster passes.
 * Forward pass (rows top to bottom, left to right): a zero source pixel gives 0; the first pixel
 *   of the image, if nonzero, gives the maximum M; any other nonzero pixel gives the minimum
 *   over the neighbours already visited and inside the image (left and up: a; up-left and
 *   up-right: b; 5x5 also (x+-1, y-2) and (x+-2, y-1): c) of neighbour value + weight.
 * Backward pass (bottom to top, right to left): each pixel becomes the minimum of its value and
 *   the mirrored neighbours (right, down: a; down-left, down-right: b; 5x5 also (x+-1, y+2) and
 *   (x+-2, y+1): c) plus their weights.
 * M and sums: 8u saturates every sum at M = 255, 16u at M = 65535 (an image without a zero
 *   pixel is M everywhere). 8u32f: M = +infinity and the float sums are not bounded (each sum is
 *   one single-precision addition); an image without a zero pixel is +infinity everywhere.
 * Weights: the 8u and 16u members take Rvp32s weights, each at least 1 (else -56); weights above
 *   M act as M. The 8u32f members take Rvp32f weights, each positive and finite (else -56).
 * A weight a > b (a diagonal cheaper than a straight step) is accepted and gets no special
 *   treatment: the two passes are applied literally with the weights given. Their result is
 *   then not always the cheapest path in the weighted grid (a zig-zag of diagonal steps that
 *   needs both passes alternately is not found).
 * 5x5: after the weight check, when c >= a + min(2a, b) (evaluated in 64-bit integers, or in
 *   single precision for float weights) the knight step can never win and the 3x3 transform
 *   with a and b is run instead. With a <= b and integer (or integer-valued float) weights the
 *   values are identical to those of the full 5x5 passes; with fractional float weights they
 *   can differ from them in the last bits, as the sums are rounded along different paths.
 * Checks: pSrc, pDst, pMetrics null -8; width or height < 1 -6; srcStep < width or dstStep below
 * the destination's row bytes -14; a 16u or 32f dstStep not a multiple of its element size -108;
 * a bad weight -56. Source and destination must not overlap, except in the in-place members. */
RVPCV_API RvpStatus rvpiDistanceTransform_3x3_8u_C1R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst,
    int dstStep, RvpiSize roiSize, const Rvp32s* pMetrics);
RVPCV_API RvpStatus rvpiDistanceTransform_5x5_8u_C1R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst,
    int dstStep, RvpiSize roiSize, const Rvp32s* pMetrics);
RVPCV_API RvpStatus rvpiDistanceTransform_3x3_8u_C1IR(Rvp8u* pSrcDst, int srcDstStep,
    RvpiSize roiSize, const Rvp32s* pMetrics);
RVPCV_API RvpStatus rvpiDistanceTransform_5x5_8u_C1IR(Rvp8u* pSrcDst, int srcDstStep,
    RvpiSize roiSize, const Rvp32s* pMetrics);
RVPCV_API RvpStatus rvpiDistanceTransform_3x3_8u16u_C1R(const Rvp8u* pSrc, int srcStep,
    Rvp16u* pDst, int dstStep, RvpiSize roiSize, const Rvp32s* pMetrics);
RVPCV_API RvpStatus rvpiDistanceTransform_5x5_8u16u_C1R(const Rvp8u* pSrc, int srcStep,
    Rvp16u* pDst, int dstStep, RvpiSize roiSize, const Rvp32s* pMetrics);
RVPCV_API RvpStatus rvpiDistanceTransform_3x3_8u32f_C1R(const Rvp8u* pSrc, int srcStep,
    Rvp32f* pDst, int dstStep, RvpiSize roiSize, const Rvp32f* pMetrics);
RVPCV_API RvpStatus rvpiDistanceTransform_5x5_8u32f_C1R(const Rvp8u* pSrc, int srcStep,
    Rvp32f* pDst, int dstStep, RvpiSize roiSize, const Rvp32f* pMetrics);

/* Exact Euclidean transform: each pixel gets sqrt(dx^2 + dy^2) to the nearest zero source pixel,
 * computed from the exact integer squared distance and rounded once to single precision
 * (exact for distances whose square is below 2^53); zero pixels give 0; an image without a zero
 * pixel is +infinity everywhere. Linear time (per-column scans, then the lower envelope of
 * parabolas along each row).
 * Buffer: 24 * max(ceil4(width), ceil4(height)) + 56 bytes, any alignment; it is overwritten.
 * The size query checks pBufferSize null -8, width or height < 1 -6, and -6 for a region whose
 * buffer size does not fit a signed 32-bit count.
 * Checks: pSrc, pDst, pBuffer null -8; size -6 (as the query); srcStep < width -14; dstStep <
 * 4 * width -14; dstStep not a multiple of 4 -108. */
RVPCV_API RvpStatus rvpiTrueDistanceTransformGetBufferSize_8u32f_C1R(RvpiSize roiSize,
    int* pBufferSize);
RVPCV_API RvpStatus rvpiTrueDistanceTransform_8u32f_C1R(const Rvp8u* pSrc, int srcStep,
    Rvp32f* pDst, int dstStep, RvpiSize roiSize, Rvp8u* pBuffer);

/* Fast marching: the first-order upwind solution of |grad T| = 1 with T = 0 on the zero source
 * pixels, over 4-neighbours with unit spacing. Pixels become final in increasing order of their
 * tentative value (ties: the upper row first, then the left column); whenever a pixel becomes
 * final, each non-final 4-neighbour takes min(its value, t) where, with a and b the smallest
 * final horizontal and vertical neighbours, t solves (t - a)^2 + (t - b)^2 = 1 when |a - b| < 1
 * and is min(a, b) + 1 otherwise (computed in double, rounded once to single precision).
 * radius: the band that is computed. Marching stops at the first tentative value above radius:
 * every pixel whose value is at most radius gets its value, every other pixel is +infinity
 * (as is every nonzero pixel of an image without zero pixels). radius +infinity computes the
 * whole image; radius 0 leaves only the zero pixels finite. A negative or NaN radius is -5.
 * Buffer: (height + 34) * (ceil32(width) + 5) + 40 bytes, any alignment; it is overwritten.
 * The size query checks pBufferSize null -8, width or height < 1 -6, and -6 for a region whose
 * buffer size does not fit a signed 32-bit count.
 * Checks: pSrc, pDst, pBuffer null -8; size -6 (as the query); srcStep < width -14; dstStep <
 * 4 * width -14; dstStep not a multiple of 4 -108; radius -5. */
RVPCV_API RvpStatus rvpiFastMarchingGetBufferSize_8u32f_C1R(RvpiSize roiSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiFastMarching_8u32f_C1R(const Rvp8u* pSrc, int srcStep, Rvp32f* pDst,
    int dstStep, RvpiSize roiSize, Rvp32f radius, Rvp8u* pBuffer);


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
