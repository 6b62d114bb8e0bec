// Acad::ErrorStatus, the result of most database calls. Reference: "Opening and Closing
// Database Objects", https://help.autodesk.com/cloudhelp/2018/KOR/OARX-DevGuide/files/GUID-0A020C24-EE38-4BDA-8D46-4B326B63F3C6.htm
// and "Erasing Objects" (eWasErased),
// https://help.autodesk.com/cloudhelp/2018/KOR/OARX-DevGuide/files/GUID-B9E3225A-675F-4802-9DD0-928EA1C7917A.htm
// (the numeric values are not confirmed; the adapter compares only against eOk).
#pragma once

struct Acad {
  enum ErrorStatus {
    eOk = 0,
    eNotImplementedYet = 1,
    eInvalidInput = 3,
    eKeyNotFound = 56,
    eDuplicateKey = 57,
    eWasErased = 87,
    eNullObjectId = 5,
    // AcDbObject::handOverTo succeeded: the object handed over is the caller's to delete.
    eObjectToBeDeleted = 22,
  };
};
