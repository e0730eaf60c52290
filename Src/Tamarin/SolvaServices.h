#ifndef SRC_TAMARIN_SOLVASERVICES_H
#define SRC_TAMARIN_SOLVASERVICES_H
// The platform service objects of the shell: created in ZvWidgetInstance::Enter and
// deleted in Exit; any module may use them in between.

namespace Vantrel {
namespace Solva {
class CKernelSvc;
class CPowerSvc;
class CEventSvc;
class CButtonSvc;
class CDisplaySvc;
class CAccelerometerSvc;
class CVideoSvc;
}  // namespace Solva
}  // namespace Vantrel

extern Vantrel::Solva::CKernelSvc* gKernelSvc;
extern Vantrel::Solva::CPowerSvc* gPowerSvc;
extern Vantrel::Solva::CEventSvc* gEventSvc;
extern Vantrel::Solva::CButtonSvc* gButtonSvc;
extern Vantrel::Solva::CDisplaySvc* gDisplaySvc;
extern Vantrel::Solva::CAccelerometerSvc* gAccelerometerSvc;
extern Vantrel::Solva::CVideoSvc* gVideoSvc;

#endif
