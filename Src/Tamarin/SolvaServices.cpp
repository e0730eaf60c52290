#include "Tamarin/SolvaServices.h"

Vantrel::Solva::CKernelSvc* gKernelSvc = 0;
Vantrel::Solva::CPowerSvc* gPowerSvc = 0;
Vantrel::Solva::CEventSvc* gEventSvc = 0;
Vantrel::Solva::CButtonSvc* gButtonSvc = 0;
Vantrel::Solva::CDisplaySvc* gDisplaySvc = 0;
Vantrel::Solva::CAccelerometerSvc* gAccelerometerSvc = 0;
Vantrel::Solva::CVideoSvc* gVideoSvc = 0;
