// Nothing of it is used by the runtime type.
#pragma once
