// Sends a command string to the host at once (as if typed). The host exports this function
// but no public header of the supported release declares it, so the module declares it on
// every build.
#pragma once

bool acedPostCommand(const wchar_t* command);
