#include "simulator/scenario/DefaultScenario.h"

namespace simulator
{
    std::string_view DefaultScenario()
    {
        return R"toml(# A flat, as one adapter meets it: for each thing that a program does, a device that lets it and one that does not.
adapter = "00:1a:7d:da:71:13"
enumeration-completes-ms = 600

[[device]] # pairs over Classic, is learnt with its LE side, and unpairs on both
name = "Kitchen Speaker"
address = "a4:c1:38:5e:22:0f"
protocols = ["classic", "le"]
appears-ms = 40
[device.le]
is-paired = true
appears-ms = 60
# Only where the listing writes the address as the LE identifier does, do programs find the one by the other.
[device.le.properties]
"System.Devices.DeviceInstanceId" = 'BTHLE\Dev_a4c1385e220f\8&1a2b3c4d&0&a4:c1:38:5e:22:0f'
[[device.le.change]]
at-ms = 500
property = "System.Devices.Aep.SignalStrength"
value = -48

[[device]] # comes first, and is found by its neighbour's name
name = "Living Room TV Soundbar"
address = "38:8b:59:0c:e4:71"
appears-ms = 80

[[device]]
name = "Living Room TV"
address = "64:1c:ae:93:5d:08"
appears-ms = 200

[[device]] # paired, and unpairs
name = "Car Radio"
address = "30:c3:d9:47:b2:6e"
is-paired = true
appears-ms = 180

[[device]] # paired, and stays so
name = "Door Lock"
address = "88:6b:0f:2a:91:c4"
is-paired = true
appears-ms = 190
[device.unpairing]
status = "AccessDenied"

[[device]] # refuses whoever it does not know
name = "Baby Monitor"
address = "b0:09:da:5f:13:8a"
appears-ms = 140
[device.pairing]
status = "AuthenticationFailure"

[[device]] # shows a PIN to its wearer
name = "Trail Headset"
address = "5c:f3:70:8b:41:d6"
appears-ms = 120
[device.pairing]
kind = "DisplayPin"
pin = "482913"
duration-ms = 150

[[device]] # wants a PIN typed
name = "Desk Keyboard"
address = "d0:3e:7d:92:0c:58"
appears-ms = 160
[device.pairing]
kind = "ProvidePin"
pin = "731064"

[[device]] # comes into range while programs look for it
name = "Zoë's Phone"
address = "f4:0f:24:6d:a9:31"
appears-ms = 400

[[device]] # an old friend, not listed: it would be taken for what a pairing has brought along
name = "Travel Mouse"
address = "e8:47:3a:15:b0:c2"
protocols = ["le"]
is-paired = true
listed = false
appears-ms = 240
[device.properties]
"System.Devices.Aep.IsConnected" = true

[[device]] # talks to anyone and pairs with nobody, then sleeps
name = "Bathroom Scale"
address = "c1:9b:05:e4:77:2a"
protocols = ["le"]
can-pair = false
appears-ms = 220
leaves-ms = 580

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
