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
/* Summed-area tables of one-channel images. roiSize is the source size (w, h).
 *
 * Integral and squared tables have (w + 1) columns and (h + 1) rows: element (x, y) is the start
 * value plus the sum (of pixels, or of squared pixels) over source rows 0..y-1, columns 0..x-1.
 * Row 0 and column 0 of every later row hold the start value (`val`, `valSqr`; 0 for the members
 * without one). Steps: source >= w elements, tables >= (w + 1) elements and a multiple of their
 * element size; -14 is tested for every image before -108.
 *
 * Arithmetic: 32s tables wrap modulo 2^32 silently. rvpiIntegral_32f_C1R keeps a running
 * single-precision row sum, adding the pixels from left to right, and adds the element above
 * (one rounding each). The 8u -> 32f tables form the row sum exactly in integers in blocks of
 * 16 pixels (from column 0), add each block prefix converted to single precision to the
 * single-precision carry of the earlier blocks (one rounding), then add the element above (one
 * rounding); exact while row sums stay below 2^24. 64f squared tables add the exact integer row
 * prefix of squares to the element above (one rounding). */
RVPCV_API RvpStatus rvpiIntegral_32f_C1R(const Rvp32f* pSrc, int srcStep, Rvp32f* pDst,
                                         int dstStep, RvpiSize roiSize);
RVPCV_API RvpStatus rvpiIntegral_8u32f_C1R(const Rvp8u* pSrc, int srcStep, Rvp32f* pDst,
                                           int dstStep, RvpiSize roiSize, Rvp32f val);
RVPCV_API RvpStatus rvpiIntegral_8u32s_C1R(const Rvp8u* pSrc, int srcStep, Rvp32s* pDst,
                                           int dstStep, RvpiSize roiSize, Rvp32s val);
RVPCV_API RvpStatus rvpiSqrIntegral_8u32s_C1R(const Rvp8u* pSrc, int srcStep, Rvp32s* pDst,
                                              int dstStep, Rvp32s* pSqr, int sqrStep,
                                              RvpiSize roiSize, Rvp32s val, Rvp32s valSqr);
RVPCV_API RvpStatus rvpiSqrIntegral_8u32s64f_C1R(const Rvp8u* pSrc, int srcStep, Rvp32s* pDst,
                                                 int dstStep, Rvp64f* pSqr, int sqrStep,
                                                 RvpiSize roiSize, Rvp32s val, Rvp64f valSqr);
RVPCV_API RvpStatus rvpiSqrIntegral_8u32f64f_C1R(const Rvp8u* pSrc, int srcStep, Rvp32f* pDst,
                                                 int dstStep, Rvp64f* pSqr, int sqrStep,
                                                 RvpiSize roiSize, Rvp32f val, Rvp64f valSqr);

/* Tilted (45-degree) tables: (w + 2) columns and (h + 2) rows; rows 0 and 1 hold only the start
 * value. Row R >= 2 is fed by source row s = R - 2, and element (x, R) is the start value plus
 * the sum over the source pixels (px, py) with py <= s and x-1-(s-py) <= px <= x+(s-py): a cone
 * whose lowest row is the pixel pair x-1, x of row s, one pixel wider on each side per row up.
 * Inside a row T[R][x] = S[x-1] + S[x] + T[R-1][x-1] + T[R-1][x+1] - T[R-2][x], and in column w
 * the term S[w] is absent. Columns 0 and w+1 also hold exact cone sums:
 * T[R][0] = S[0] + T[R-1][1] and T[R][w+1] = T[R-1][w]. 32s tables wrap; floating tables add in
 * the order ((S[x-1] + S[x]) + T[R-1][x-1]) + T[R-1][x+1]) - T[R-2][x], the pixel pair (or its
 * squares) being an exact integer. Steps: tables >= (w + 2) elements.
 *
 * With the table's element (1, 1) taken as image position (0, 0), the corners
 * D = (x, y), B = (x - h, y + h), C = (x + w, y + w), A = (x + w - h, y + w + h) bound, as
 * T(A) - T(B) - T(C) + T(D), the 45-degree rectangle of the 2·w·h pixels (px, py) with
 * x + y < px + py <= x + y + 2w and y - x <= py - px <= y - x + 2h - 1: its top row is y + 1
 * (pixels x and x + 1), its leftmost pixel x + 1 - h, its rightmost x + w. The tilted Haar
 * classifiers read this layout. */
RVPCV_API RvpStatus rvpiTiltedIntegral_8u32s_C1R(const Rvp8u* pSrc, int srcStep, Rvp32s* pDst,
                                                 int dstStep, RvpiSize roiSize, Rvp32s val);
RVPCV_API RvpStatus rvpiTiltedIntegral_8u32f_C1R(const Rvp8u* pSrc, int srcStep, Rvp32f* pDst,
                                                 int dstStep, RvpiSize roiSize, Rvp32f val);
RVPCV_API RvpStatus rvpiTiltedSqrIntegral_8u32s_C1R(const Rvp8u* pSrc, int srcStep,
                                                    Rvp32s* pDst, int dstStep, Rvp32s* pSqr,
                                                    int sqrStep, RvpiSize roiSize, Rvp32s val,
                                                    Rvp32s valSqr);
RVPCV_API RvpStatus rvpiTiltedSqrIntegral_8u32s64f_C1R(const Rvp8u* pSrc, int srcStep,
                                                       Rvp32s* pDst, int dstStep, Rvp64f* pSqr,
                                                       int sqrStep, RvpiSize roiSize,
                                                       Rvp32s val, Rvp64f valSqr);
RVPCV_API RvpStatus rvpiTiltedSqrIntegral_8u32f64f_C1R(const Rvp8u* pSrc, int srcStep,
                                                       Rvp32f* pDst, int dstStep, Rvp64f* pSqr,
                                                       int sqrStep, RvpiSize roiSize,
                                                       Rvp32f val, Rvp64f valSqr);

/* Window deviations: for each position (i, j) of roiSize, the standard deviation of the window
 * rect moved by (i, j), from an integral table (pSrc) and a squared table (pSqr).
 * Upright: the window's sums are T(A) - T(B) - T(C) + T(D) with A = (x+w, y+h), B = (x, y+h),
 * C = (x+w, y), D = (x, y); area w·h. Tilted: the 45-degree rectangle of the tilted tables
 * described above (corners read at table element (i + cx + 1, j + cy + 1)); area 2·w·h.
 * Sums: 32s tables are differenced with 32-bit wrapping; the integral's difference is read as
 * signed, a 32s squared table's as unsigned (squares are never negative; exact below 2^32);
 * floating tables are differenced in double in the order ((A - B) - C) + D.
 * Then, in double, inv = 1/area and var = S2·inv - (S1·inv)^2, rounded once to single; a
 * negative variance becomes 0 before the single-precision square root (flat windows give 0,
 * never NaN). The Sfs members store the deviation times 2^-scaleFactor (computed in double),
 * rounded to nearest with ties to even and saturated to Rvp32s; any scaleFactor is accepted.
 * Checks: null -8; size -6; srcStep < elem·(roi.width + rect.x + rect.width [+ 1 tilted]),
 * dstStep < elem·roi.width or sqrStep likewise -14, then steps not a multiple of their element
 * size -108; rect.x < 0, rect.y < 0, rect.width < 1 or rect.height < 1 -5, and for the tilted
 * members also rect.x + 1 < rect.height -5 (the window would reach left of the table).
 * Rows read: j + rect.y .. j + rect.y + rect.height upright, up to
 * j + rect.y + rect.width + rect.height + 1 tilted; the caller provides them. */
RVPCV_API RvpStatus rvpiRectStdDev_32f_C1R(const Rvp32f* pSrc, int srcStep, const Rvp64f* pSqr,
                                           int sqrStep, Rvp32f* pDst, int dstStep,
                                           RvpiSize roiSize, RvpiRect rect);
RVPCV_API RvpStatus rvpiRectStdDev_32s32f_C1R(const Rvp32s* pSrc, int srcStep,
                                              const Rvp64f* pSqr, int sqrStep, Rvp32f* pDst,
                                              int dstStep, RvpiSize roiSize, RvpiRect rect);
RVPCV_API RvpStatus rvpiRectStdDev_32s_C1RSfs(const Rvp32s* pSrc, int srcStep,
                                              const Rvp32s* pSqr, int sqrStep, Rvp32s* pDst,
                                              int dstStep, RvpiSize roiSize, RvpiRect rect,
                                              int scaleFactor);
RVPCV_API RvpStatus rvpiTiltedRectStdDev_32f_C1R(const Rvp32f* pSrc, int srcStep,
                                                 const Rvp64f* pSqr, int sqrStep, Rvp32f* pDst,
                                                 int dstStep, RvpiSize roiSize, RvpiRect rect);
RVPCV_API RvpStatus rvpiTiltedRectStdDev_32s32f_C1R(const Rvp32s* pSrc, int srcStep,
                                                    const Rvp64f* pSqr, int sqrStep,
                                                    Rvp32f* pDst, int dstStep, RvpiSize roiSize,
                                                    RvpiRect rect);
RVPCV_API RvpStatus rvpiTiltedRectStdDev_32s_C1RSfs(const Rvp32s* pSrc, int srcStep,
                                                    const Rvp32s* pSqr, int sqrStep,
                                                    Rvp32s* pDst, int dstStep, RvpiSize roiSize,
                                                    RvpiRect rect, int scaleFactor);


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
 *     single-precision 1/9 or 1/25. When an addition meets two NaNs the running sum's NaN is
 *     kept, so NaN results (sign and payload included) are reproducible.
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
 * -225. Weights w_i = exp(-i*i/(2 sigma^2)), i = -K/2..K/2 (exponent in single precision, exponential in
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
 * negative 16s values round toward +infinity), then saturates. 32f: row pass then column
 * pass, each the single-precision sum in tap order of the products with the nonzero taps
 * (taps that underflow to 0 are left out), no fused multiply-add, NaNs as for the derivative
 * filters.
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
/* ---- Canny edge detector -----------------------------------------------------------------
 * Marks edge pixels of the region with 255 and every other pixel with 0.
 *
 * rvpiCanny_16s8u_C1R / rvpiCanny_32f8u_C1R (pSrcDx, srcDxStep, pSrcDy, srcDyStep, pDst,
 * dstStep, roiSize, lowThresh, highThresh, pBuffer): from caller-computed derivatives, dx
 * increasing to the right and dy increasing downwards.
 * Checks: pSrcDx, pSrcDy, pDst, pBuffer null -8; size -6 (also a region whose buffer size,
 * below, would not fit 32 bits); dx, dy steps below 2 (16s) or 4 (32f) times the width, or dst
 * step below the width -14; dx, dy steps not a multiple of the element size -108; lowThresh < 0,
 * lowThresh > highThresh, or either threshold NaN -5 (lowThresh = highThresh is accepted).
 *
 * rvpiCannyBorder_8u_C1R (pSrc, srcStep, pDst, dstStep, roiSize, filterType, mask, borderType,
 * borderValue, lowThresh, highThresh, norm, pBuffer): computes the derivatives itself.
 *   filterType rvpCannySobel: dx = (-1 0 1 horizontally x 1 2 1 vertically), dy = (1 2 1 x
 *     -1 0 1) for mask 33; dx = (-1 -2 0 2 1 x 1 4 6 4 1), dy = (1 4 6 4 1 x -1 -2 0 2 1) for
 *     mask 55: the 8u16s results of the SobelVert / SobelHoriz kernels of the filters above.
 *   filterType rvpCannyScharr (mask 33 only): dx = (-1 0 1 x 3 10 3), dy = (3 10 3 x -1 0 1),
 *     the 8u16s ScharrVert / ScharrHoriz results.
 *   borderType 1 (replicate) or 6 (the K/2 rows and columns around the region, 1 for 3x3 and 2
 *     for 5x5, are read from the caller's image); borderValue is not used by either.
 *   norm rvpCannyNormL1: m = |dx| + |dy|; rvpCannyNormL2: m = the single-precision square
 *     root of the exact integer dx*dx + dy*dy converted to single precision.
 * Checks: pSrc, pDst, pBuffer null -8; size -6 (also a region whose buffer size would not
 * fit 32 bits, judged for mask 55 when it is given, else for 33); steps below the width -14;
 * mask not 33 or 55 -33; borderType not exactly 1 or 6 -225; filterType not Sobel or Scharr
 * -5; Scharr with mask 55 -33; norm not L1 or L2 -5; thresholds as above -5.
 *
 * The detection, exactly:
 * 1. m = |dx| + |dy| in single precision (16s values converted exactly; the bordered form as
 *    chosen by norm). m < lowThresh becomes 0; a magnitude equal to lowThresh stays.
 * 2. Non-maximum suppression with ax = |dx|, ay = |dy| in single precision:
 *    ay < ax * 0.41421357f: candidate when m(left) < m and m(right) <= m;
 *    else ay > ax * 2.4142137f: candidate when m(above) < m and m(below) <= m;
 *    else, when the sign bits of dx and dy differ (a 32f -0.0 counts as negative): candidate
 *    when m(below-left) < m and m(above-right) < m; otherwise when m(below-right) < m and
 *    m(above-left) < m. A zero magnitude is never a candidate; a NaN magnitude never is, and a
 *    NaN neighbour blocks its pixel (every comparison with NaN fails).
 * 3. Frame: every pixel of the region can be an edge, the first and last rows and columns
 *    included; neighbours outside the region have magnitude 0 and are never candidates, so an
 *    edge never continues through the outside.
 * 4. Strong candidates are those with m > highThresh strictly: a magnitude equal to highThresh
 *    is a candidate but no seed.
 * 5. Hysteresis: every candidate 8-connected through candidates to a strong candidate is an
 *    edge (255); the growth is depth-first from each strong candidate, neighbours in the order
 *    above-left, above, above-right, left, right, below-left, below, below-right. The result
 *    does not depend on that order.
 * Outputs of more than 2 MiB, larger than the largest cache, are written with streaming stores.
 *
 * Buffers (W, H the region; R32 rounds up to a multiple of 32): scratch for one call at a time,
 * any alignment, no state kept between calls; the result does not depend on the buffer.
 * rvpiCannyGetSize (roiSize, pBufferSize): pBufferSize null -8; size -6; a size beyond 32
 *   bits -6. 5 (W + 2)(H + 2) + 160 + 16 W bytes when W and H are below 65533, otherwise
 *   9 (W + 2)(H + 2) + 160 + 16 W (the hysteresis stack then holds 32-bit coordinates).
 * rvpiCannyBorderGetSize (roiSize, mask, pBufferSize): pBufferSize null -8; size -6; mask not
 *   33 or 55 -33; a size beyond 32 bits -6. With m = 3 or 5, A = W - 1 + m, B = (H - 1 + m) A:
 *   R32(16 A) + R32(B) + R32(4 B) + 64, plus R32(B) when min(W, H) < m. The size does not
 *   depend on the filter type. */
enum { rvpCannySobel = 0, rvpCannyScharr = 1 };
enum { rvpCannyNormL1 = 1, rvpCannyNormL2 = 2 };
RVPCV_API RvpStatus rvpiCannyGetSize(RvpiSize roiSize, int* pBufferSize);
RVPCV_API RvpStatus rvpiCanny_16s8u_C1R(const Rvp16s* pSrcDx, int srcDxStep,
                                        const Rvp16s* pSrcDy, int srcDyStep, Rvp8u* pDst,
                                        int dstStep, RvpiSize roiSize, Rvp32f lowThresh,
                                        Rvp32f highThresh, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiCanny_32f8u_C1R(const Rvp32f* pSrcDx, int srcDxStep,
                                        const Rvp32f* pSrcDy, int srcDyStep, Rvp8u* pDst,
                                        int dstStep, RvpiSize roiSize, Rvp32f lowThresh,
                                        Rvp32f highThresh, Rvp8u* pBuffer);
RVPCV_API RvpStatus rvpiCannyBorderGetSize(RvpiSize roiSize, int mask, int* pBufferSize);
RVPCV_API RvpStatus rvpiCannyBorder_8u_C1R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst,
                                           int dstStep, RvpiSize roiSize, int filterType,
                                           int mask, RvpiBorderType borderType,
                                           Rvp8u borderValue, Rvp32f lowThresh,
                                           Rvp32f highThresh, int norm, Rvp8u* pBuffer);


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
/* One stage of a Haar cascade. The state is one block from rvpMalloc: a 56-byte header
 * (classifier count; rectangle count; pointer to the first classifier record; bounding
 * rectangle minX, minY, W, H; tilted flag word; three counts: _32f: two-rectangle classifiers,
 * two- plus three-rectangle classifiers, rectangles; _32s: rectangles, two-rectangle, two- plus
 * three-rectangle; _32f: 1 when every classifier's first weight truncates to -1 (also for an
 * empty state), else 0; one reserved word), then 32-byte classifier records (rectangle count,
 * pointer to its first feature record, threshold, left vote, right vote, tag = input index *
 * 256, + 1 when tilted), then 36-byte feature records (corners A, B, C, D as x, y pairs, then
 * the weight). Classifiers are stored regrouped: all with 2 rectangles, then all with 3, then
 * the rest, each group in input order; summation (and so float rounding) follows that order.
 * A window's rectangle sum is I(A) - I(B) - I(C) + I(D), corners read at the window origin plus
 * (px, py). Upright corners of (x, y, w, h): A (x+w, y+h), B (x, y+h), C (x+w, y), D (x, y).
 * Tilted (tilted constructor, or rvpiTiltHaarFeatures with flag != 0): A (x+w-h, y+w+h),
 * B (x-h, y+h), C (x+w, y+w), D (x, y); with flag 0: A (x, y+h), B (x-h, y), C (x+w, y+h-w),
 * D (x+w-h, y-w). Tilted corners read the tilted table of rvpiTiltedIntegral_* with its element
 * (1, 1) as the window origin (the 45-degree rectangle described there).
 *
 * InitAlloc: any null pointer -8; length < 0 or any pNum[i] < 1 -6 (length 0 gives an empty
 * state); _32f: a rectangle with x < 0, y < 0, width < 1 or height < 1 -5 before allocating
 * (*ppState untouched); allocation failure (or a block over 2^31 - 1 bytes) -9; _32s: the same
 * rectangle test after allocating: block freed, *ppState set to NULL, -5. The bounding
 * rectangle starts from the first input rectangle; for each stored feature minX = min(minX,
 * D.x), minY = min(minY, D.y), W = A.x if A.x > minX + W, H = A.y if A.y > minY + H; finally
 * W -= minX, H -= minY (no apply function reads it).
 * Tilted InitAlloc: same checks; input order; tags index * 256 + 1; tilted flag 1; group counts
 * 0 with the rectangle count in the flavour's rectangle slot; bounding rectangle starts from
 * (x0, y0, w0 - h0, w0 + h0); a rectangle with x < 0, y < 0, w < 1, h < 1 or x + 1 < h frees
 * the block, sets *ppState to NULL and returns -5. */
typedef struct RvpiHaarClassifier_32f RvpiHaarClassifier_32f;
typedef struct RvpiHaarClassifier_32s RvpiHaarClassifier_32s;

RVPCV_API RvpStatus rvpiHaarClassifierInitAlloc_32f(RvpiHaarClassifier_32f** ppState,
                                                    const RvpiRect* pFeature,
                                                    const Rvp32f* pWeight,
                                                    const Rvp32f* pThreshold,
                                                    const Rvp32f* pVal1, const Rvp32f* pVal2,
                                                    const int* pNum, int length);
RVPCV_API RvpStatus rvpiHaarClassifierInitAlloc_32s(RvpiHaarClassifier_32s** ppState,
                                                    const RvpiRect* pFeature,
                                                    const Rvp32s* pWeight,
                                                    const Rvp32s* pThreshold,
                                                    const Rvp32s* pVal1, const Rvp32s* pVal2,
                                                    const int* pNum, int length);
RVPCV_API RvpStatus rvpiTiltedHaarClassifierInitAlloc_32f(RvpiHaarClassifier_32f** ppState,
                                                          const RvpiRect* pFeature,
                                                          const Rvp32f* pWeight,
                                                          const Rvp32f* pThreshold,
                                                          const Rvp32f* pVal1,
                                                          const Rvp32f* pVal2, const int* pNum,
                                                          int length);
RVPCV_API RvpStatus rvpiTiltedHaarClassifierInitAlloc_32s(RvpiHaarClassifier_32s** ppState,
                                                          const RvpiRect* pFeature,
                                                          const Rvp32s* pWeight,
                                                          const Rvp32s* pThreshold,
                                                          const Rvp32s* pVal1,
                                                          const Rvp32s* pVal2, const int* pNum,
                                                          int length);
/* NULL -8; otherwise releases the block with rvpFree and returns 0. */
RVPCV_API RvpStatus rvpiHaarClassifierFree_32f(RvpiHaarClassifier_32f* pState);
RVPCV_API RvpStatus rvpiHaarClassifierFree_32s(RvpiHaarClassifier_32s* pState);
/* Window size: (largest C.x, largest A.y) over all features, from 0; (0, 0) when empty. */
RVPCV_API RvpStatus rvpiGetHaarClassifierSize_32f(const RvpiHaarClassifier_32f* pState,
                                                  RvpiSize* pSize);
RVPCV_API RvpStatus rvpiGetHaarClassifierSize_32s(const RvpiHaarClassifier_32s* pState,
                                                  RvpiSize* pSize);
/* pMask: one byte per classifier in input order, nonzero = make it tilted; flag selects the
 * corner convention (see above). Null -8; tilted flag already set -5. For each selected input
 * index i, in rising order, the first stored classifier whose tag >> 8 equals i gets tag 1
 * exactly and its features' corners rewritten from their upright (x, y, A.x - D.x,
 * A.y - D.y). The tilted flag is set when any mask byte was nonzero, so a second call with a
 * nonzero mask fails with -5; an all-zero mask leaves the state as it was. */
RVPCV_API RvpStatus rvpiTiltHaarFeatures_32f(const Rvp8u* pMask, int flag,
                                             RvpiHaarClassifier_32f* pState);
RVPCV_API RvpStatus rvpiTiltHaarFeatures_32s(const Rvp8u* pMask, int flag,
                                             RvpiHaarClassifier_32s* pState);

/* Apply one stage to every window position (u, v) of roiSize whose mask byte is nonzero: for
 * each classifier in stored order, S = sum over its features (stored order) of rectangle sum *
 * weight; vote = left if S < threshold_c * norm(u, v), else right; T = sum of votes in stored
 * order; T < threshold clears the mask byte, otherwise the position survives with its mask byte
 * unchanged (one rule for every column; a NaN T survives). *pPositive = survivors among the
 * evaluated positions; zero mask bytes are neither evaluated nor counted.
 * Arithmetic: _32f: float rectangle sums ((A - B) - C) + D, float products and sums, float
 * threshold_c * norm. _32s32f: rectangle sums in wrapping int32, converted to float, then as
 * _32f. _32s_C1RSfs: int32 wrapping rectangle sums, products, sums and threshold_c * norm;
 * scaleFactor accepted and never read. Mixed _32s_C1RSfs: the feature sum is the 64-bit sum of
 * int32 * int32 products shifted left by -scaleFactor (0 for shifts of 64 or more), compared
 * with the 64-bit threshold_c * norm; votes summed in wrapping int32.
 * Mixed members read tilted classifiers (tag bit 0) from pTilt at the window origin one row
 * down and one element right, upright ones from pSrc. The non-mixed members ignore the tag and
 * read every feature from pSrc through a per-call table of corner offsets from rvpMalloc.
 * Checks: null pSrc, (pTilt), pNorm, pMask, pPositive, pState -8; size -6; srcStep, (tiltStep),
 * normStep < 4 * width or maskStep < width -14; srcStep, (tiltStep), normStep not a multiple
 * of 4 -108; mixed _32s scaleFactor > 0 -5; offset-table allocation -9. The tables must hold
 * every corner of every window position: the caller sizes roiSize accordingly. */
RVPCV_API RvpStatus rvpiApplyHaarClassifier_32f_C1R(const Rvp32f* pSrc, int srcStep,
                                                    const Rvp32f* pNorm, int normStep,
                                                    Rvp8u* pMask, int maskStep, RvpiSize roiSize,
                                                    int* pPositive, Rvp32f threshold,
                                                    const RvpiHaarClassifier_32f* pState);
RVPCV_API RvpStatus rvpiApplyHaarClassifier_32s32f_C1R(const Rvp32s* pSrc, int srcStep,
                                                       const Rvp32f* pNorm, int normStep,
                                                       Rvp8u* pMask, int maskStep,
                                                       RvpiSize roiSize, int* pPositive,
                                                       Rvp32f threshold,
                                                       const RvpiHaarClassifier_32f* pState);
RVPCV_API RvpStatus rvpiApplyHaarClassifier_32s_C1RSfs(const Rvp32s* pSrc, int srcStep,
                                                       const Rvp32s* pNorm, int normStep,
                                                       Rvp8u* pMask, int maskStep,
                                                       RvpiSize roiSize, int* pPositive,
                                                       Rvp32s threshold,
                                                       const RvpiHaarClassifier_32s* pState,
                                                       int scaleFactor);
RVPCV_API RvpStatus rvpiApplyMixedHaarClassifier_32f_C1R(const Rvp32f* pSrc, int srcStep,
                                                         const Rvp32f* pTilt, int tiltStep,
                                                         const Rvp32f* pNorm, int normStep,
                                                         Rvp8u* pMask, int maskStep,
                                                         RvpiSize roiSize, int* pPositive,
                                                         Rvp32f threshold,
                                                         const RvpiHaarClassifier_32f* pState);
RVPCV_API RvpStatus rvpiApplyMixedHaarClassifier_32s32f_C1R(
    const Rvp32s* pSrc, int srcStep, const Rvp32s* pTilt, int tiltStep, const Rvp32f* pNorm,
    int normStep, Rvp8u* pMask, int maskStep, RvpiSize roiSize, int* pPositive,
    Rvp32f threshold, const RvpiHaarClassifier_32f* pState);
RVPCV_API RvpStatus rvpiApplyMixedHaarClassifier_32s_C1RSfs(
    const Rvp32s* pSrc, int srcStep, const Rvp32s* pTilt, int tiltStep, const Rvp32s* pNorm,
    int normStep, Rvp8u* pMask, int maskStep, RvpiSize roiSize, int* pPositive,
    Rvp32s threshold, const RvpiHaarClassifier_32s* pState, int scaleFactor);


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
