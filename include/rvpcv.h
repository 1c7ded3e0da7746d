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
/* Reductions over the selected pixels of one channel: every pixel in the R forms, the pixels
 * whose mask byte is nonzero in the MR forms; C3C forms read channel coi (1..3) of an
 * interleaved three-channel image. Values are taken exactly as double.
 *
 *   Norm_Inf  max |x|          Norm_L1  sum |x|          Norm_L2  sqrt(sum x*x)
 *   NormDiff_<n>  the same norms of x1 - x2 (integer pixels: |x1 - x2| exact in integers;
 *                 Rvp32f: the difference formed in double)
 *   NormRel_<n>   NormDiff_<n>(src1, src2) / Norm_<n>(src2), one pass. A zero denominator
 *                 gives status rvpStsDivByZeroWrn (6) and: the default NaN (bits
 *                 0xFFF8000000000000) when the numerator is 0 too, +infinity when it is
 *                 positive, -infinity otherwise (a NaN numerator from Rvp32f data).
 *   Mean          sum x / n; 0.0 (status 0) when no pixel is selected.
 *   Mean_StdDev   m = sum x / n, deviation = sqrt(|fma(-m, m, sum(x*x) / n)|): E[x^2] - m^2 with
 *                 one rounding; a rounding-negative variance gives a small positive deviation.
 *                 Both results are 0.0 when no pixel is selected.
 *   MinMaxIndx    minimum and maximum as Rvp32f with their positions (x column, y row, relative
 *                 to the region). Pass 1 scans rows top to bottom from the start values
 *                 3.4028234663852886e38 (min) and -3.4028234663852886e38 (max); a row replaces
 *                 an extreme only when its own extreme is strictly smaller (larger), and that row
 *                 is recorded. Pass 2 takes the first selected column of the recorded row whose
 *                 value equals the extreme; the value returned is the one stored there (so the
 *                 sign of a zero extreme is that pixel's). Ties resolve to the top-most row, then
 *                 the left-most column. NaN pixels never become an extreme.
 *                 No pixel selected (all-zero mask): both values 0.0, both positions (0, 0).
 *                 Pixels selected but an extreme never passed its start value (only NaN, or only
 *                 values at or beyond the start value): that extreme keeps its start value and
 *                 reports position (0, 0).
 *
 * Exactness. Integer sums (sum x, sum |x|, sum x*x, counts) are exact for every region size:
 * 32-bit vector lanes are widened to 64 bits at least once per row, so the result never depends
 * on the region's pixel count. The mean divides the exact sum by the exact count in double. The
 * integer L2 norms take the square root of the exact square sum (128-bit), rounded once to
 * double; Mean_StdDev adds the exact per-row square sums in double precision, row by row.
 * Rvp32f sums are formed in double in eight partial sums (element j of a row feeds partial
 * j % 8, continued across rows) combined as ((p0+p4)+(p2+p6)) + ((p1+p5)+(p3+p7)); results do
 * not depend on alignment or vector width.
 *
 * Rvp32f special values: NaN and infinities take part in the arithmetic (a selected NaN makes
 * Norm_Inf, the sums and the mean NaN; inf - inf is NaN). Every NaN result is returned as the
 * default NaN 0xFFF8000000000000. Masked-off pixels never influence a result, whatever they
 * hold.
 *
 * Pointers: Norm*, NormDiff*, NormRel* and Mean require their result pointer (null -> -8).
 * Mean_StdDev and MinMaxIndx test only the source and mask for null; every result pointer may be
 * null and is then not written.
 *
 * Checks in order: null pointers (-8); width or height below 1 (-6); every source step below
 * width x channels x element size, or the mask step below the width (-14); source steps not a
 * multiple of the element size (-108); then, for C3C forms, coi outside 1..3 (-52). */

/* Rvp8u pixels */
RVPCV_API RvpStatus rvpiNorm_Inf_8u_C1MR(const Rvp8u* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNorm_Inf_8u_C3CMR(const Rvp8u* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, int coi, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNorm_L1_8u_C1MR(const Rvp8u* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNorm_L1_8u_C3CMR(const Rvp8u* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, int coi, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNorm_L2_8u_C1MR(const Rvp8u* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNorm_L2_8u_C3CMR(const Rvp8u* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, int coi, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormDiff_Inf_8u_C1MR(const Rvp8u* pSrc1, int src1Step, const Rvp8u* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormDiff_Inf_8u_C3CMR(const Rvp8u* pSrc1, int src1Step, const Rvp8u* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, int coi, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormDiff_L1_8u_C1MR(const Rvp8u* pSrc1, int src1Step, const Rvp8u* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormDiff_L1_8u_C3CMR(const Rvp8u* pSrc1, int src1Step, const Rvp8u* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, int coi, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormDiff_L2_8u_C1MR(const Rvp8u* pSrc1, int src1Step, const Rvp8u* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormDiff_L2_8u_C3CMR(const Rvp8u* pSrc1, int src1Step, const Rvp8u* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, int coi, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormRel_Inf_8u_C1MR(const Rvp8u* pSrc1, int src1Step, const Rvp8u* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormRel_Inf_8u_C3CMR(const Rvp8u* pSrc1, int src1Step, const Rvp8u* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, int coi, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormRel_L1_8u_C1MR(const Rvp8u* pSrc1, int src1Step, const Rvp8u* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormRel_L1_8u_C3CMR(const Rvp8u* pSrc1, int src1Step, const Rvp8u* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, int coi, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormRel_L2_8u_C1MR(const Rvp8u* pSrc1, int src1Step, const Rvp8u* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormRel_L2_8u_C3CMR(const Rvp8u* pSrc1, int src1Step, const Rvp8u* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, int coi, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiMean_8u_C1MR(const Rvp8u* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, Rvp64f* pMean);
RVPCV_API RvpStatus rvpiMean_8u_C3CMR(const Rvp8u* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, int coi, Rvp64f* pMean);
RVPCV_API RvpStatus rvpiMean_StdDev_8u_C1R(const Rvp8u* pSrc, int srcStep, RvpiSize roiSize,
    Rvp64f* pMean, Rvp64f* pStdDev);
RVPCV_API RvpStatus rvpiMean_StdDev_8u_C3CR(const Rvp8u* pSrc, int srcStep, RvpiSize roiSize,
    int coi, Rvp64f* pMean, Rvp64f* pStdDev);
RVPCV_API RvpStatus rvpiMean_StdDev_8u_C1MR(const Rvp8u* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, Rvp64f* pMean, Rvp64f* pStdDev);
RVPCV_API RvpStatus rvpiMean_StdDev_8u_C3CMR(const Rvp8u* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, int coi, Rvp64f* pMean, Rvp64f* pStdDev);
RVPCV_API RvpStatus rvpiMinMaxIndx_8u_C1R(const Rvp8u* pSrc, int srcStep, RvpiSize roiSize,
    Rvp32f* pMinVal, Rvp32f* pMaxVal, RvpiPoint* pMinIndex, RvpiPoint* pMaxIndex);
RVPCV_API RvpStatus rvpiMinMaxIndx_8u_C3CR(const Rvp8u* pSrc, int srcStep, RvpiSize roiSize,
    int coi, Rvp32f* pMinVal, Rvp32f* pMaxVal, RvpiPoint* pMinIndex, RvpiPoint* pMaxIndex);
RVPCV_API RvpStatus rvpiMinMaxIndx_8u_C1MR(const Rvp8u* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, Rvp32f* pMinVal, Rvp32f* pMaxVal, RvpiPoint* pMinIndex,
    RvpiPoint* pMaxIndex);
RVPCV_API RvpStatus rvpiMinMaxIndx_8u_C3CMR(const Rvp8u* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, int coi, Rvp32f* pMinVal, Rvp32f* pMaxVal, RvpiPoint* pMinIndex,
    RvpiPoint* pMaxIndex);

/* Rvp8s pixels */
RVPCV_API RvpStatus rvpiNorm_Inf_8s_C1MR(const Rvp8s* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNorm_Inf_8s_C3CMR(const Rvp8s* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, int coi, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNorm_L1_8s_C1MR(const Rvp8s* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNorm_L1_8s_C3CMR(const Rvp8s* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, int coi, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNorm_L2_8s_C1MR(const Rvp8s* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNorm_L2_8s_C3CMR(const Rvp8s* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, int coi, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormDiff_Inf_8s_C1MR(const Rvp8s* pSrc1, int src1Step, const Rvp8s* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormDiff_Inf_8s_C3CMR(const Rvp8s* pSrc1, int src1Step, const Rvp8s* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, int coi, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormDiff_L1_8s_C1MR(const Rvp8s* pSrc1, int src1Step, const Rvp8s* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormDiff_L1_8s_C3CMR(const Rvp8s* pSrc1, int src1Step, const Rvp8s* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, int coi, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormDiff_L2_8s_C1MR(const Rvp8s* pSrc1, int src1Step, const Rvp8s* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormDiff_L2_8s_C3CMR(const Rvp8s* pSrc1, int src1Step, const Rvp8s* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, int coi, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormRel_Inf_8s_C1MR(const Rvp8s* pSrc1, int src1Step, const Rvp8s* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormRel_Inf_8s_C3CMR(const Rvp8s* pSrc1, int src1Step, const Rvp8s* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, int coi, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormRel_L1_8s_C1MR(const Rvp8s* pSrc1, int src1Step, const Rvp8s* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormRel_L1_8s_C3CMR(const Rvp8s* pSrc1, int src1Step, const Rvp8s* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, int coi, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormRel_L2_8s_C1MR(const Rvp8s* pSrc1, int src1Step, const Rvp8s* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormRel_L2_8s_C3CMR(const Rvp8s* pSrc1, int src1Step, const Rvp8s* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, int coi, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiMean_8s_C1MR(const Rvp8s* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, Rvp64f* pMean);
RVPCV_API RvpStatus rvpiMean_8s_C3CMR(const Rvp8s* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, int coi, Rvp64f* pMean);
RVPCV_API RvpStatus rvpiMean_StdDev_8s_C1R(const Rvp8s* pSrc, int srcStep, RvpiSize roiSize,
    Rvp64f* pMean, Rvp64f* pStdDev);
RVPCV_API RvpStatus rvpiMean_StdDev_8s_C3CR(const Rvp8s* pSrc, int srcStep, RvpiSize roiSize,
    int coi, Rvp64f* pMean, Rvp64f* pStdDev);
RVPCV_API RvpStatus rvpiMean_StdDev_8s_C1MR(const Rvp8s* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, Rvp64f* pMean, Rvp64f* pStdDev);
RVPCV_API RvpStatus rvpiMean_StdDev_8s_C3CMR(const Rvp8s* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, int coi, Rvp64f* pMean, Rvp64f* pStdDev);
RVPCV_API RvpStatus rvpiMinMaxIndx_8s_C1R(const Rvp8s* pSrc, int srcStep, RvpiSize roiSize,
    Rvp32f* pMinVal, Rvp32f* pMaxVal, RvpiPoint* pMinIndex, RvpiPoint* pMaxIndex);
RVPCV_API RvpStatus rvpiMinMaxIndx_8s_C3CR(const Rvp8s* pSrc, int srcStep, RvpiSize roiSize,
    int coi, Rvp32f* pMinVal, Rvp32f* pMaxVal, RvpiPoint* pMinIndex, RvpiPoint* pMaxIndex);
RVPCV_API RvpStatus rvpiMinMaxIndx_8s_C1MR(const Rvp8s* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, Rvp32f* pMinVal, Rvp32f* pMaxVal, RvpiPoint* pMinIndex,
    RvpiPoint* pMaxIndex);
RVPCV_API RvpStatus rvpiMinMaxIndx_8s_C3CMR(const Rvp8s* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, int coi, Rvp32f* pMinVal, Rvp32f* pMaxVal, RvpiPoint* pMinIndex,
    RvpiPoint* pMaxIndex);

/* Rvp16u pixels */
RVPCV_API RvpStatus rvpiNorm_Inf_16u_C1MR(const Rvp16u* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNorm_Inf_16u_C3CMR(const Rvp16u* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, int coi, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNorm_L1_16u_C1MR(const Rvp16u* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNorm_L1_16u_C3CMR(const Rvp16u* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, int coi, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNorm_L2_16u_C1MR(const Rvp16u* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNorm_L2_16u_C3CMR(const Rvp16u* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, int coi, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormDiff_Inf_16u_C1MR(const Rvp16u* pSrc1, int src1Step,
    const Rvp16u* pSrc2, int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize,
    Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormDiff_Inf_16u_C3CMR(const Rvp16u* pSrc1, int src1Step,
    const Rvp16u* pSrc2, int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, int coi,
    Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormDiff_L1_16u_C1MR(const Rvp16u* pSrc1, int src1Step, const Rvp16u* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormDiff_L1_16u_C3CMR(const Rvp16u* pSrc1, int src1Step,
    const Rvp16u* pSrc2, int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, int coi,
    Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormDiff_L2_16u_C1MR(const Rvp16u* pSrc1, int src1Step, const Rvp16u* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormDiff_L2_16u_C3CMR(const Rvp16u* pSrc1, int src1Step,
    const Rvp16u* pSrc2, int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, int coi,
    Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormRel_Inf_16u_C1MR(const Rvp16u* pSrc1, int src1Step, const Rvp16u* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormRel_Inf_16u_C3CMR(const Rvp16u* pSrc1, int src1Step,
    const Rvp16u* pSrc2, int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, int coi,
    Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormRel_L1_16u_C1MR(const Rvp16u* pSrc1, int src1Step, const Rvp16u* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormRel_L1_16u_C3CMR(const Rvp16u* pSrc1, int src1Step, const Rvp16u* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, int coi, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormRel_L2_16u_C1MR(const Rvp16u* pSrc1, int src1Step, const Rvp16u* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormRel_L2_16u_C3CMR(const Rvp16u* pSrc1, int src1Step, const Rvp16u* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, int coi, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiMean_16u_C1MR(const Rvp16u* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, Rvp64f* pMean);
RVPCV_API RvpStatus rvpiMean_16u_C3CMR(const Rvp16u* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, int coi, Rvp64f* pMean);
RVPCV_API RvpStatus rvpiMean_StdDev_16u_C1R(const Rvp16u* pSrc, int srcStep, RvpiSize roiSize,
    Rvp64f* pMean, Rvp64f* pStdDev);
RVPCV_API RvpStatus rvpiMean_StdDev_16u_C3CR(const Rvp16u* pSrc, int srcStep, RvpiSize roiSize,
    int coi, Rvp64f* pMean, Rvp64f* pStdDev);
RVPCV_API RvpStatus rvpiMean_StdDev_16u_C1MR(const Rvp16u* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, Rvp64f* pMean, Rvp64f* pStdDev);
RVPCV_API RvpStatus rvpiMean_StdDev_16u_C3CMR(const Rvp16u* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, int coi, Rvp64f* pMean, Rvp64f* pStdDev);
RVPCV_API RvpStatus rvpiMinMaxIndx_16u_C1R(const Rvp16u* pSrc, int srcStep, RvpiSize roiSize,
    Rvp32f* pMinVal, Rvp32f* pMaxVal, RvpiPoint* pMinIndex, RvpiPoint* pMaxIndex);
RVPCV_API RvpStatus rvpiMinMaxIndx_16u_C3CR(const Rvp16u* pSrc, int srcStep, RvpiSize roiSize,
    int coi, Rvp32f* pMinVal, Rvp32f* pMaxVal, RvpiPoint* pMinIndex, RvpiPoint* pMaxIndex);
RVPCV_API RvpStatus rvpiMinMaxIndx_16u_C1MR(const Rvp16u* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, Rvp32f* pMinVal, Rvp32f* pMaxVal, RvpiPoint* pMinIndex,
    RvpiPoint* pMaxIndex);
RVPCV_API RvpStatus rvpiMinMaxIndx_16u_C3CMR(const Rvp16u* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, int coi, Rvp32f* pMinVal, Rvp32f* pMaxVal, RvpiPoint* pMinIndex,
    RvpiPoint* pMaxIndex);

/* Rvp32f pixels */
RVPCV_API RvpStatus rvpiNorm_Inf_32f_C1MR(const Rvp32f* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNorm_Inf_32f_C3CMR(const Rvp32f* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, int coi, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNorm_L1_32f_C1MR(const Rvp32f* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNorm_L1_32f_C3CMR(const Rvp32f* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, int coi, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNorm_L2_32f_C1MR(const Rvp32f* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNorm_L2_32f_C3CMR(const Rvp32f* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, int coi, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormDiff_Inf_32f_C1MR(const Rvp32f* pSrc1, int src1Step,
    const Rvp32f* pSrc2, int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize,
    Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormDiff_Inf_32f_C3CMR(const Rvp32f* pSrc1, int src1Step,
    const Rvp32f* pSrc2, int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, int coi,
    Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormDiff_L1_32f_C1MR(const Rvp32f* pSrc1, int src1Step, const Rvp32f* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormDiff_L1_32f_C3CMR(const Rvp32f* pSrc1, int src1Step,
    const Rvp32f* pSrc2, int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, int coi,
    Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormDiff_L2_32f_C1MR(const Rvp32f* pSrc1, int src1Step, const Rvp32f* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormDiff_L2_32f_C3CMR(const Rvp32f* pSrc1, int src1Step,
    const Rvp32f* pSrc2, int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, int coi,
    Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormRel_Inf_32f_C1MR(const Rvp32f* pSrc1, int src1Step, const Rvp32f* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormRel_Inf_32f_C3CMR(const Rvp32f* pSrc1, int src1Step,
    const Rvp32f* pSrc2, int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, int coi,
    Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormRel_L1_32f_C1MR(const Rvp32f* pSrc1, int src1Step, const Rvp32f* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormRel_L1_32f_C3CMR(const Rvp32f* pSrc1, int src1Step, const Rvp32f* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, int coi, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormRel_L2_32f_C1MR(const Rvp32f* pSrc1, int src1Step, const Rvp32f* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiNormRel_L2_32f_C3CMR(const Rvp32f* pSrc1, int src1Step, const Rvp32f* pSrc2,
    int src2Step, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, int coi, Rvp64f* pNorm);
RVPCV_API RvpStatus rvpiMean_32f_C1MR(const Rvp32f* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, Rvp64f* pMean);
RVPCV_API RvpStatus rvpiMean_32f_C3CMR(const Rvp32f* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, int coi, Rvp64f* pMean);
RVPCV_API RvpStatus rvpiMean_StdDev_32f_C1R(const Rvp32f* pSrc, int srcStep, RvpiSize roiSize,
    Rvp64f* pMean, Rvp64f* pStdDev);
RVPCV_API RvpStatus rvpiMean_StdDev_32f_C3CR(const Rvp32f* pSrc, int srcStep, RvpiSize roiSize,
    int coi, Rvp64f* pMean, Rvp64f* pStdDev);
RVPCV_API RvpStatus rvpiMean_StdDev_32f_C1MR(const Rvp32f* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, Rvp64f* pMean, Rvp64f* pStdDev);
RVPCV_API RvpStatus rvpiMean_StdDev_32f_C3CMR(const Rvp32f* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, int coi, Rvp64f* pMean, Rvp64f* pStdDev);
RVPCV_API RvpStatus rvpiMinMaxIndx_32f_C1R(const Rvp32f* pSrc, int srcStep, RvpiSize roiSize,
    Rvp32f* pMinVal, Rvp32f* pMaxVal, RvpiPoint* pMinIndex, RvpiPoint* pMaxIndex);
RVPCV_API RvpStatus rvpiMinMaxIndx_32f_C3CR(const Rvp32f* pSrc, int srcStep, RvpiSize roiSize,
    int coi, Rvp32f* pMinVal, Rvp32f* pMaxVal, RvpiPoint* pMinIndex, RvpiPoint* pMaxIndex);
RVPCV_API RvpStatus rvpiMinMaxIndx_32f_C1MR(const Rvp32f* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, Rvp32f* pMinVal, Rvp32f* pMaxVal, RvpiPoint* pMinIndex,
    RvpiPoint* pMaxIndex);
RVPCV_API RvpStatus rvpiMinMaxIndx_32f_C3CMR(const Rvp32f* pSrc, int srcStep, const Rvp8u* pMask,
    int maskStep, RvpiSize roiSize, int coi, Rvp32f* pMinVal, Rvp32f* pMaxVal, RvpiPoint* pMinIndex,
    RvpiPoint* pMaxIndex);


/* ============================================================================================
 * Integral images and window deviations (src/arith/integral.cpp)
 * ========================================================================================== */
/* section:integral (declarations follow this line) */


/* ============================================================================================
 * Motion history (src/arith/motion.cpp)
 * ========================================================================================== */
/* section:motion (declarations follow this line) */
/* Updates the motion-history image (Rvp32f, in place) from a silhouette (nonzero = motion):
 * with t = timestamp - mhiDuration in single precision, each history value h becomes 0 when
 * key(h) < key(t), and then timestamp where the silhouette pixel is nonzero; otherwise h is kept
 * (values equal to t and values above timestamp included). key(b) = (b & 0x7FFFFFFF) ^ (b >> 31)
 * on the 32-bit pattern, shift arithmetic, compared as signed integers: the floating-point order
 * except that -0.0 is below +0.0, and a NaN with its sign bit clear is above every number (never
 * cleared). A Rvp32f silhouette pixel is nonzero when it compares unequal to 0.0f: -0.0 counts as
 * zero, NaN as nonzero.
 *
 * Checks in order: pSilhouette or pMHI null (-8); width or height below 1 (-6); silhouette step
 * below its row width or history step below 4 x width (-14); silhouette step not a multiple of its
 * element size or history step not a multiple of 4 (-108); mhiDuration < 0 (-11; 0 is accepted).
 * On error the history image is unchanged. */
RVPCV_API RvpStatus rvpiUpdateMotionHistory_8u32f_C1IR(const Rvp8u* pSilhouette, int silhStep,
    Rvp32f* pMHI, int mhiStep, RvpiSize roiSize, Rvp32f timestamp, Rvp32f mhiDuration);
RVPCV_API RvpStatus rvpiUpdateMotionHistory_16u32f_C1IR(const Rvp16u* pSilhouette, int silhStep,
    Rvp32f* pMHI, int mhiStep, RvpiSize roiSize, Rvp32f timestamp, Rvp32f mhiDuration);
RVPCV_API RvpStatus rvpiUpdateMotionHistory_32f_C1IR(const Rvp32f* pSilhouette, int silhStep,
    Rvp32f* pMHI, int mhiStep, RvpiSize roiSize, Rvp32f timestamp, Rvp32f mhiDuration);


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



#ifdef __cplusplus
}
#endif

#endif /* RVPCV_H */
