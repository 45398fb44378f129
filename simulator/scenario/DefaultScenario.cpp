#include "simulator/scenario/DefaultScenario.h"

namespace simulator
{
    std::string_view DefaultScenario()
    {
        return R"toml(# A living room, as one adapter meets it.
adapter = "00:1a:7d:da:71:13"
enumeration-completes-ms = 600

[[device]] # pairs without ado, over either protocol
name = "Kitchen Speaker"
address = "a4:c1:38:5e:22:0f"
protocols = ["classic", "le"]
appears-ms = 40
listed = true
[device.le]
appears-ms = 90
[[device.le.change]]
at-ms = 700
property = "System.Devices.Aep.SignalStrength"
value = -48

[[device]] # shows a PIN to its wearer
name = "Trail Headset"
address = "5c:f3:70:8b:41:d6"
appears-ms = 120
[device.pairing]
kind = "DisplayPin"
pin = "482913"
duration-ms = 150

[[device]] # wants a PIN typed on it
name = "Desk Keyboard"
address = "d0:3e:7d:92:0c:58"
protocols = ["le"]
appears-ms = 160
[device.pairing]
kind = "ProvidePin"
pin = "731064"

[[device]] # an old friend
name = "Travel Mouse"
address = "e8:47:3a:15:b0:c2"
protocols = ["le"]
is-paired = true
appears-ms = 10
[device.properties]
"System.Devices.Aep.IsConnected" = true

[[device]] # comes into range when the search is over
name = "Zoë’s Händy 📱"
address = "f4:0f:24:6d:a9:31"
appears-ms = 900
[device.pairing]
kind = "ConfirmPinMatch"
pin = "205518"
duration-ms = 200

[[device]] # talks to anyone and pairs with nobody, then sleeps
name = "Bathroom Scale"
address = "c1:9b:05:e4:77:2a"
protocols = ["le"]
can-pair = false
appears-ms = 220
leaves-ms = 1500

[[device]] # its name is late
name = ""
address = "cc:50:e3:18:f6:9d"
protocols = ["le"]
appears-ms = 260
[[device.change]]
at-ms = 450
property = "System.ItemNameDisplay"
value = "Reading Lamp"
)toml";
    }
} // namespace simulator
