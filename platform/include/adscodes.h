// Result type codes and result status codes of the host's C-level (ADS) interface.
#pragma once

// Value types of a resbuf (restype); DXF group codes are used as restype too.
#define RTNONE 5000     /* no result */
#define RTREAL 5001     /* real number */
#define RTPOINT 5002    /* 2D point (x, y) */
#define RTSHORT 5003    /* 16-bit integer */
#define RTANG 5004      /* angle */
#define RTSTR 5005      /* string */
#define RTENAME 5006    /* entity name */
#define RTPICKS 5007    /* selection set name */
#define RTORINT 5008    /* orientation */
#define RT3DPOINT 5009  /* 3D point */
#define RTLONG 5010     /* 32-bit integer */
#define RTVOID 5014     /* blank symbol */
#define RTLB 5016       /* list begin */
#define RTLE 5017       /* list end */
#define RTDOTE 5018     /* dotted pair */
#define RTNIL 5019      /* nil */
#define RTDXF0 5020     /* DXF code 0, for acutBuildList only */
#define RTT 5021        /* T atom */
#define RTRESBUF 5023   /* resbuf */
#define RTMODELESS 5027 /* interrupted by a modeless dialog */
#define RTLONG_PTR 5030 /* pointer-sized integer */
#define RTINT64 5031    /* 64-bit integer */

// Results of the ADS functions.
#define RTNORM 5100
#define RTERROR (-5001)
#define RTCAN (-5002)
#define RTREJ (-5003)
#define RTFAIL (-5004)
#define RTKWORD (-5005)
#define RTINPUTTRUNCATED (-5008)
