// Prompts, selection sets, system variables and external LISP functions.
#pragma once

#include "adsdef.h"

// "Handling Selection Sets",
// https://help.autodesk.com/cloudhelp/2021/ENU/OARX-DevGuide/files/GUID-AF949BB8-0833-445C-AAEA-7FC358E70FDE.htm
int acedSSGet(const ACHAR* str, const void* pt1, const void* pt2, const struct resbuf* filter,
              ads_name ss);
// Same page family (selection set access); signatures not confirmed.
int acedSSFree(const ads_name ss);
int acedSSLength(const ads_name ss, Adesk::Int32* len);
int acedSSName(const ads_name ss, Adesk::Int32 i, ads_name entres);
// "sssetfirst (AutoLISP)",
// https://help.autodesk.com/cloudhelp/2015/ENU/AutoCAD-AutoLISP/files/GUID-4076CD9D-1C66-4C73-ACC0-3A6CD0B0D2D8.htm
// (the C forms' signatures are not confirmed).
int acedSSGetFirst(struct resbuf** gset, struct resbuf** pset);
int acedSSSetFirst(const ads_name pset, const ads_name unused);

// User input. "ObjectARX常用类和函数" lists the acedGet* family; the wide, sized form of
// acedGetString is not confirmed.
int acedGetString(int cronly, const ACHAR* prompt, ACHAR* result, size_t bufsize);
int acedGetInt(const ACHAR* prompt, int* result);
int acedGetPoint(const ads_point pt, const ACHAR* prompt, ads_point result);
int acedEntSel(const ACHAR* str, ads_name entres, ads_point ptres);
int acedInitGet(int val, const ACHAR* kwl);

// System variables (signatures not confirmed).
int acedGetVar(const ACHAR* sym, struct resbuf* result);
int acedSetVar(const ACHAR* sym, const struct resbuf* val);

// "Evaluating External Functions",
// https://help.autodesk.com/cloudhelp/2018/KOR/OARX-DevGuide/files/GUID-51BDDB57-0179-4524-9523-CA2D0B10E3F0.htm
// and "External Functions",
// https://help.autodesk.com/cloudhelp/2025/ESP/OARXMAC-DevGuide/files/GUID-7696AD2E-4681-4ABC-853E-03A3454583AA.htm
// (signatures not confirmed).
int acedDefun(const ACHAR* sname, int funcno);
int acedUndef(const ACHAR* sname, int funcno);
int acedGetFunCode();
int acedRetNil();

// The status-line progress meter and the display (signatures not confirmed).
int acedSetStatusBarProgressMeter(const ACHAR* pszLabel, int nMinPos, int nMaxPos);
int acedSetStatusBarProgressMeterPos(int nPos);
void acedRestoreStatusBar();
void acedUpdateDisplay();

// Adds an entity to a selection set (signature not confirmed; same family as acedSSName).
int acedSSAdd(const ads_name ename, const ads_name sname, ads_name result);

// The text typed at the last prompt that allowed arbitrary input (acedInitGet flag 128), after
// it answered RTKWORD (signature not confirmed).
int acedGetInput(ACHAR* str, size_t bufsize);
