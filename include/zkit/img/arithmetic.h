// Arithmetic and logic between images and constants. One code (arithmetic_codes.h says what each does to a pixel) and
// the kinds of the operands choose the operation.
//
// All of them work in place, also where the destination is the second operand, and regions that overlap in any other
// way give the result of separate regions. A ZC24 constant gives each byte of a colour pixel its own; a grey image
// beside a colour image gives all three bytes of a pixel its grey level; a ZBW8 operand of a ZBW16 destination is
// zero-extended.
#pragma once

#include "zkit/core/error.h"
#include "zkit/core/roi.h"
#include "zkit/export.h"
#include "zkit/img/arithmetic_codes.h"

/// dst = a with every pixel of src as a and the constant as b, through a table and ImgLut.
/// Codes: 0 to 9, 13, 14, 15, 19, 20, 22 (writes 0 where a is 0), 33.
/// Errors, in this order: a pending error; 1400 null region; 1402 sizes differ; 1601 no memory for the table; 1003 any
/// other code; 1411 division (5, 6) by the constant 0; those of ImgLut. dst is then unchanged. Returns 0 or the code.
/// Trail: "ImgOper1c2", for errors of ImgLut after its trail.
ZKIT_IMG_API short ImgOper1c2(ARITH_LOGIC_OPERATIONS operation, ZROI<ZBW8>* src, ZBW8 c, ZROI<ZBW8>* dst);

/// Two grey images. Codes: 2 to 6, 9, 13, 14, 15, 19, 20.
/// Errors, in this order: a pending error; 1400 null region and 1402 sizes differ, of a and b, then of a and dst; 1400
/// no pixels; 1401 region outside its image; 1003 a code below 2 or above 20; 32767 any other code that is not
/// accepted; 1303 no memory to keep overlapping regions apart. dst is then unchanged. 1412: there were zero divisors
/// (5, 6); their pixels are 255, all others are done too. Returns 0 or the code. Trail: "ImgOper123".
ZKIT_IMG_API short ImgOper123(ARITH_LOGIC_OPERATIONS operation, ZROI<ZBW8>* a, ZROI<ZBW8>* b, ZROI<ZBW8>* dst);

// The forms of ImgOper. Errors, unless a form says otherwise, in this order: a pending error; for every region 1400
// (null or no pixels) and 1401 (outside its image); 1402 sizes differ; 1003 a code that the form does not accept; 1411
// division or remainder (5, 6) by a constant with a zero byte; 1303 no memory to keep overlapping regions apart. dst is
// then unchanged. 1412: an image that divides (5, 6) has zero pixels; what they divide becomes the largest value, all
// other pixels are done too. Trail: the name in quotes.

/// Every pixel becomes the constant. Code: 0. "ImgOper (BW8 Const to Image)"
ZKIT_IMG_API void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZBW8 c, ZROI<ZBW8>* dst);

/// Codes: 0, 1. "ImgOper (BW8 Image to Image)"
ZKIT_IMG_API void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZROI<ZBW8>* src, ZROI<ZBW8>* dst);

/// Codes: 0, 1. "ImgOper (BW8 Image to C24 Image)"
ZKIT_IMG_API void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZROI<ZBW8>* src, ZROI<ZC24>* dst);

/// The constant is a, the image b. Codes: 0 to 6, 9 to 15, 19, 20, 23 to 28; 0 fills with the constant, 1 with its
/// complement. "ImgOper (BW8 Const, Image to Image)"
ZKIT_IMG_API void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZBW8 c, ZROI<ZBW8>* src, ZROI<ZBW8>* dst);

/// The image is a, the constant b. Codes: 0 to 15, 19 to 28. "ImgOper (BW8 Image, Const to Image)"
ZKIT_IMG_API void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZROI<ZBW8>* src, ZBW8 c, ZROI<ZBW8>* dst);

/// Codes: 2 to 6, 9 to 28. "ImgOper (BW8 Image, Image to Image)"
ZKIT_IMG_API void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZROI<ZBW8>* a, ZROI<ZBW8>* b, ZROI<ZBW8>* dst);

/// Every pixel becomes the constant. Code: 0. "ImgOper (C24 Const to Image)"
ZKIT_IMG_API void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZC24 c, ZROI<ZC24>* dst);

/// Codes: 0, 1. "ImgOper (C24 Image to Image)"
ZKIT_IMG_API void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZROI<ZC24>* src, ZROI<ZC24>* dst);

/// The constant is a, the image b. Codes: as for ZBW8. "ImgOper (C24 Const, Image to Image)"
ZKIT_IMG_API void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZC24 c, ZROI<ZC24>* src, ZROI<ZC24>* dst);

/// The image is a, the constant b. Codes: 2 to 15, 19 to 28. "ImgOper (C24 Image, Const to Image)"
ZKIT_IMG_API void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZROI<ZC24>* src, ZC24 c, ZROI<ZC24>* dst);

/// Codes: 2 to 6, 9 to 28. "ImgOper (C24 Image, Image to Image)"
ZKIT_IMG_API void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZROI<ZC24>* a, ZROI<ZC24>* b, ZROI<ZC24>* dst);

/// Codes: 2 to 6, 9 to 22. Errors, in this order: a pending error; 1400 null region; 1403 sizes differ; 1400 no pixels,
/// which leaves no name in the trail; 1401; 1003; 1303; 1412. "ImgOper (BW8 Image, C24 Image to C24 Image)"
ZKIT_IMG_API void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZROI<ZBW8>* a, ZROI<ZC24>* b, ZROI<ZC24>* dst);

/// The same with the operands' kinds exchanged. "ImgOper (C24 Image, BW8 Image to C24 Image)"
ZKIT_IMG_API void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZROI<ZC24>* a, ZROI<ZBW8>* b, ZROI<ZC24>* dst);

/// Every pixel becomes the constant. Code: 0. "ImgOper (BW16 Const to BW16 Image)"
ZKIT_IMG_API void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZBW16 c, ZROI<ZBW16>* dst);

/// Codes: 2 to 5. "ImgOper (BW8 Image and BW8 Image to BW16 Image)"
ZKIT_IMG_API void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZROI<ZBW8>* a, ZROI<ZBW8>* b, ZROI<ZBW16>* dst);

/// Codes: 2 to 6, 9 to 30. "ImgOper (BW16 Image and BW8 Image to BW16 IMage)" (spelt so)
ZKIT_IMG_API void ImgOper(ARITH_LOGIC_OPERATIONS operation, ZROI<ZBW16>* a, ZROI<ZBW8>* b, ZROI<ZBW16>* dst);
