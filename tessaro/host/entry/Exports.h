#pragma once

/// All that the module exports. Main thread.
extern "C" {

/// Takes one of the host's messages; every code but those of the lifecycle is ignored. Always 0.
int acrxEntryPoint(int msg, void* pkt);
int acrxGetApiVersion();
/// Offers the button for the command to what shows buttons: 0 in the host's edition without toolbars, else 1.
int NorvaneSetupToolbar();
}
