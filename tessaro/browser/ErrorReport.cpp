#include "tessaro/browser/ErrorReport.h"

#include "tessaro/platform/File.h"
#include "tessaro/platform/Text.h"
#include "tessaro/platform/UserInterface.h"

void ReportErrors(const std::function<void()>& handler) {
    try {
        handler();
    } catch (const platform::FileException& exception) {
        platform::MessageBox(exception.ErrorText());
    } catch (const platform::ArchiveException& exception) {
        platform::MessageBox(exception.ErrorText());
    } catch (const std::exception& exception) {
        platform::MessageBox(platform::FromNarrow(exception.what()));
    }
}
