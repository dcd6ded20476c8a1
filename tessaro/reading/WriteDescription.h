#pragma once

struct Block;

/// Writes the Block's description into the comments of its drawing, in the folder of the current Directory: the host
/// reads the drawing and saves it beside as ".dwg2" in its own format, which then takes the drawing's place. True when
/// the host reported a good save.
///
/// The exchange of the files follows in every case. A save that failed therefore leaves no drawing at all, and so does
/// every format but 2000 to 2013: those are saved in place with a back-up, and only the ".bak" remains. Throws
/// FileException where a drawing of R13 or R14 is then looked for to put its picture back. Main thread, while another
/// drawing is the host's current one.
bool WriteDescription(Block& block);

/// Writes the descriptions of all Blocks of the current Directory that wait for it, whatever comes of each. Main
/// thread.
void SavePendingDescriptions();
