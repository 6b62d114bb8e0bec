// ADS types and result codes: points, names, result buffers. Reference: "Handling Selection
// Sets", https://help.autodesk.com/cloudhelp/2021/ENU/OARX-DevGuide/files/GUID-AF949BB8-0833-445C-AAEA-7FC358E70FDE.htm
// (ads_name, ads_point, struct resbuf) and "Returning Values to AutoLISP Functions",
// https://help.autodesk.com/cloudhelp/2021/ENU/OARX-DevGuide/files/GUID-E7C56553-3BBA-40CD-9B30-D228E65FCFC8.htm
// (signature not confirmed: the resbuf union's layout and the RT* values other than RTNORM).
#pragma once

#include "adesk.h"

typedef double ads_real;
typedef ads_real ads_point[3];
typedef Adesk::LongPtr ads_name[2];

union ads_u_val {
  ads_real rreal;
  ads_real rpoint[3];
  short rint;
  ACHAR* rstring;
  Adesk::LongPtr rlname[2];
  Adesk::Int32 rlong;
};

struct resbuf {
  struct resbuf* rbnext;
  short restype;
  union ads_u_val resval;
};

#define RTNONE 5000
#define RTREAL 5001
#define RTPOINT 5002
#define RTSHORT 5003
#define RTSTR 5005
#define RTENAME 5006
#define RTPICKS 5007
#define RTLONG 5010
#define RTNORM 5100
#define RTERROR (-5001)
#define RTCAN (-5002)
#define RTREJ (-5003)
#define RTKWORD (-5005)
