// The text conversions live in model/text_codec.h, where the exports share them with the editors.
#ifndef ORVANE_EDITORS_COMMON_TEXT_CODEC_H
#define ORVANE_EDITORS_COMMON_TEXT_CODEC_H

#include "model/text_codec.h"

#endif
