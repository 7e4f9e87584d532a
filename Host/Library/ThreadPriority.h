#pragma once

namespace helmo {

/** Lets the calling thread, and what it starts from now on, stand back for drawing and sound, at the
   processor and at the disk. There is no way back. */
void standBack();

}  // namespace helmo
