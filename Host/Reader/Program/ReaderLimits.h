#pragma once

#include "Host/Reader/ReaderProgress.h"

namespace helmo {

/** Takes from this process what reading doesn't need: memory beyond a limit, files beyond a few, writing
   files, other descriptors, core dumps, and the processor when others want it. It is killed when helmo ends,
   and ends itself when one request takes too much of the processor. Before anything is read. */
void applyReaderLimits(ReaderRole role);

/** A new request begins: its time counts from here. */
void restartReaderTime();

}  // namespace helmo
