// The host application services: the working database. Reference: "blog.csdn.net ObjectArx学习
// 笔记" shows acdbHostApplicationServices()->workingDatabase(),
// https://blog.csdn.net/qq_33850776/article/details/118567787 (the class is not confirmed on a
// reference page).
#pragma once

#include "dbmain.h"

class AcDbHostApplicationServices : public AcRxObject {
 public:
  AcDbDatabase* workingDatabase() const;
};
AcDbHostApplicationServices* acdbHostApplicationServices();
