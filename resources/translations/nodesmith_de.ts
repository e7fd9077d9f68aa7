<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>AboutDialog</name>
    <message>
        <source>Describes a CAN device and generates the configuration of its protocol stack.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Versions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Versions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Licences</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This program: Apache License 2.0, below. Qt: GNU Lesser General Public License 3. SQLite: in the public domain.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Text of the licence</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not available</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The text of the licence has not been installed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>About %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation type="unfinished">&amp;Kopieren</translation>
    </message>
    <message>
        <source>Copy the versions for a request for support</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Qt %1 (built with %2)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SQLite %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>System: %1, %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Platform: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Settings: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copied</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CANSignalForm</name>
    <message>
        <source>CAN-IDs</source>
        <translation type="unfinished">CAN-IDs</translation>
    </message>
    <message>
        <source>This line has no raw CAN messages.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Messages cannot be edited in this version.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>CAN-ID</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hex</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Frame</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ext.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Direction</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Signals</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cycle (ms)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Datatype</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Variable Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Position</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bits</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CANopenStackSettingsFormV4</name>
    <message>
        <source>Basic CANopen settings: line-dependent settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>CANopen NMT functionality</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>NMT slave|NMT master|NMT master and slave</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>CANopen Default Node-ID</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>CANopen Node-ID function</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Overwrite pre-defined connection set</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Basic CANopen settings: line-independent settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sorted COB List</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Only one COB for HB Consumer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>optional CANopen Services</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>LSS (Layer Setting Services) supported</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>LSS (Layer Setting Services) Inquiry services supported</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sleep Mode Support</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sleep Mode Waiting Time (ms)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SDO Block Transfer supported</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SDO Block Transfer Block Size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SDO Block Transfer use for data  of [n] bytes or larger</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SDO Block Transfer CRC Support</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SDO Client Queue Support</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SDO Client Queue Length</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SDO Client Queue internal access supported</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SDO Limit Check (at SDO Server write access)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SDO Domain Indication Size (at SDO server read/write access)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SDO Client Domain Write with special callback for partial data provision</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Routing for Emergency supported (CiA 302-7)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Routing for SDO supported (CiA 302-7)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>NMT Bootup Manager supported (CiA 302-2)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Configuration Manager supported (CiA 302-2)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SDO Split Indication supported</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SRDO Loop Counter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SRDO  Timer Interval in µs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>static declaration for objects mapped in SRDO</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ignore SRDO rx data validation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ask before each gen_srdo.c generation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dynamic Object Dictionary supported</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bitwise PDO Mapping</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ID Negotiation supported</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>0x1010 auto-store handled by application</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Max. Slave Assignment Count</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Flying Master supported</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Indication functions: No of dynamic functions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enable dynamic registration of indication functions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>CAN Event</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SDO Server Read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SDO Server Write</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SDO Server Check Write</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SDO Server Domain Write</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SDO Server Domain Read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SDO Client Read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SDO Client Write</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SDO Network Client Event</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SDO Requesting Device (SRD) event</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PDO Event</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PDO Update Event</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>MPDO Event</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>NMT Event</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>NMT Error Control Event</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Store/Restore/LOAD Event</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>GFC Event</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SYNC Event</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SYNC Event finished</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>LED Red Event</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Emergency Producer Event</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Emergency Consumer Event</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Time Stamp Consumer Event</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>LSS Event</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>NMT Bootup Manager Event</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Configuration Manager Event</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Flying Master Event</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Object Changed Event</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ID Negotiation Event</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Indication functions: Static function name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Communication Event</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear Event</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Event</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>LED Green Event</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>USDO Server</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>USDO Server Connection count</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>USDO Client</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>USDO Client Connection Count</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>USDO settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>USDO Domain Indication size in multiple of 60 bytes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>USDO Server Split Indication support</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>USDO indication settings: No of dynamic indication functions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>USDO Server Read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>USDO Server Write</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>USDO Server Domain Read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>USDO Server Domain Write</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>USDO Client Read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>USDO Client Write</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>USDO Client Domain Read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>USDO Client Domain Write</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>USDO indication settings: static indication function name</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DeviceDescriptionForm</name>
    <message>
        <source>Device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Vendor name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Product name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Order code</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>File version</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>File revision</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Created by</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Modified by</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Comment</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Additional sections</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bit rates</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>10 kbit/s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>20 kbit/s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>50 kbit/s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>125 kbit/s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>250 kbit/s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>500 kbit/s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>800 kbit/s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1000 kbit/s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Features</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>LSS supported</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Self-starting device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Granularity of PDO mapping</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dummy mapping</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>0x0001 - BOOLEAN</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>0x0002 - INTEGER8</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>0x0003 - INTEGER16</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>0x0004 - INTEGER32</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>0x0005 - UNSIGNED8</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>0x0006 - UNSIGNED16</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>0x0007 - UNSIGNED32</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DiffConfigurationDialog</name>
    <message>
        <source>Configure Project Diff</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>These fields count as a difference:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Objects</source>
        <translation type="unfinished">Objekte</translation>
    </message>
    <message>
        <source>Sub-indices</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PGNs</source>
        <translation type="unfinished">PGNs</translation>
    </message>
    <message>
        <source>SPNs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>CAN-IDs</source>
        <translation type="unfinished">CAN-IDs</translation>
    </message>
    <message>
        <source>Data elements</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DiffFields</name>
    <message>
        <source>no</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>as defaultvalue</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>yes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>DataType</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ObjectType</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Category</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device Class</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Description</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>AccessType</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>DefaultValue</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PdoMapping</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>LowerLimit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>UpperLimit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Implementation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>VariableName</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>WizardSource</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ChangedByUser</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>HasDefault</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>DefaultInEDS</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>LimitCheck</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Managed by LVX</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>In all lines</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>non-volatile storage</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Prority</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cycle Time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Inhibit Time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Data Type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Implementation Type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Variable Name</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DiffItemText</name>
    <message>
        <source>different</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>current</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>to be removed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>other</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>to be added</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unnamed object</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unnamed subindex</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unnamed PGN</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unnamed SPN</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unnamed CAN-ID</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unnamed signal</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Transmit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Receive</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>EBNodeGuide</name>
    <message>
        <source>Physical device configuration</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device changeable by end-user</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Manufacturer-specific functionality</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Support for Firmware Update via EnergyBus</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Modified since it was applied to the object dictionary</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Virtual devices</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Virtual device %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>none</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FileTextView</name>
    <message>
        <source>Text of the file</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FileViewerDialog</name>
    <message>
        <source>File viewer tools</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Path of the file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Try again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Read the file again (F5)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Place of the cursor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Size and encoding of the file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reading the file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation type="unfinished">&amp;Kopieren</translation>
    </message>
    <message>
        <source>Copy the selected text (Ctrl+C)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Find</source>
        <translation type="unfinished">&amp;Suchen</translation>
    </message>
    <message>
        <source>Find a text in the file (Ctrl+F)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Find &amp;next</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Find &amp;previous</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Go to line</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Go to a line by its number (Ctrl+G)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Reload</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Read the file again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Open in other program</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open the file in the program that the desktop has for it (Ctrl+E)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zoom &amp;in</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bigger letters (Ctrl++ or Ctrl and the wheel)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zoom &amp;out</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Smaller letters (Ctrl+- or Ctrl and the wheel)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Usual size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>mixed line ends</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 - File viewer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file no longer exists. This is its last content.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file
%1
does not exist. It is shown here as soon as it has been written.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1
is not a file.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file
%1
cannot be read: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This is not a text file. Its bytes are shown.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Only the first %1 of %2 are shown.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Lines of more than %L1 characters are shown in several rows.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>read at %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Line %L1 of %L2, column %L3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Go to line</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Line (1 to %L1):</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No program has been found that opens this file.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FindBar</name>
    <message>
        <source>&amp;Find:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Text to find</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Text to find; Enter finds the next place, Shift+Enter the previous one</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Find the previous place (Shift+F3)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Find previous</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Find the next place (F3)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Find next</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Match case</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Take capital and small letters for different ones</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Whole words</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Find the text only where it is a word of its own</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close the find bar (Esc)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close the find bar</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Continued at the other end</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not found</source>
        <translation type="unfinished">Nicht gefunden</translation>
    </message>
</context>
<context>
    <name>GeneralSettingsForm3</name>
    <message>
        <source>Queue &amp; Buffers: line-dependent settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>CAN receive buffer size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>CAN transmit buffer size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Queue &amp; Buffers: line-independent settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Additional COB objects</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Additional user transmit messages</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Additional user receive messages</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>CAN FD supported</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Generation</source>
        <translation type="unfinished">Generierung</translation>
    </message>
    <message>
        <source>Initialization of managed variables</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Initizalization value for managed variables</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use compact array definitions if applicable</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Generate generation counter in gen_define.h</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Memory specifier after static variables in gen_*.c</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Generate default values for variable strings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Special virtual object definition</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Generate cpp output file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Generation Format (internally)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Application header file(s)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Generate MSBuild property files for the C# wrapper</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hardware/Target</source>
        <translation type="unfinished">Hardware/Zielsystem</translation>
    </message>
    <message>
        <source>Include all targets in gen_define.h</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Interval of CPU timer in µs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Endianess (Byte-Order)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Little Endian|Big Endian</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enable CAN Filter (FullCAN)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enable CAN Group Filter  (deprecated)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Target define  (only if multiple targets are used)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Target specific defines</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Additional application-specific defines:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ISO-TP Support</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enable ISO-TP</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No of ISO-TP Client Connections</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No of ISO-TP Server Connections</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No of Dynamic Server Indications</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No of Dynamic Client Indications</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No of Dynamic Client TX Ack Indications</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No of Dynamic Split Indications</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>UDS Server Support</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enable UDS Server</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Server active</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Security Seed/Key Length</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Session Timeout (ms)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Physical address request CAN-ID</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Physical address response CAN-ID</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Functional address request CAN-ID</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ISO-TP address format</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Physical address request: device address</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Physical address response: tool address</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Functional address request: device address</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Read Data by Periodic Identifier CAN-ID</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Application Session Check only</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Application Security Level Check only</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>UDS Server API Version</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>UDS Bootloader Config</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>UDS Client Support</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enable UDS Client</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No of UDS Clients</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>partial Download Callback</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>GeneratorOutputForm</name>
    <message>
        <source>Messages</source>
        <translation>Meldungen</translation>
    </message>
    <message>
        <source>No messages yet. &quot;Generate Files&quot; checks the project and writes its files; what they have to tell appears here.</source>
        <translation>Noch keine Meldungen. „Dateien generieren“ prüft das Projekt und schreibt seine Dateien; was dabei zu melden ist, steht hier.</translation>
    </message>
    <message>
        <source>Show or hide errors; a run with errors generates nothing</source>
        <translation>Fehler zeigen oder verbergen; ein Lauf mit Fehlern generiert nichts</translation>
    </message>
    <message>
        <source>Show or hide warnings</source>
        <translation>Warnungen zeigen oder verbergen</translation>
    </message>
    <message>
        <source>Show or hide hints</source>
        <translation>Hinweise zeigen oder verbergen</translation>
    </message>
    <message>
        <source>Show or hide what the check has corrected in the project</source>
        <translation>Zeigen oder verbergen, was die Prüfung im Projekt korrigiert hat</translation>
    </message>
    <message>
        <source>Show or hide all other messages</source>
        <translation>Alle anderen Meldungen zeigen oder verbergen</translation>
    </message>
    <message>
        <source>&amp;Find</source>
        <translation>&amp;Suchen</translation>
    </message>
    <message>
        <source>Find a text in the messages (Ctrl+F)</source>
        <translation>Einen Text in den Meldungen suchen (Strg+F)</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Copy the selected messages (Ctrl+C)</source>
        <translation>Die ausgewählten Meldungen kopieren (Strg+C)</translation>
    </message>
    <message>
        <source>&amp;Save...</source>
        <translation>S&amp;peichern...</translation>
    </message>
    <message>
        <source>Save all messages to a text file</source>
        <translation>Alle Meldungen in eine Textdatei speichern</translation>
    </message>
    <message>
        <source>C&amp;lear</source>
        <translation>&amp;Leeren</translation>
    </message>
    <message>
        <source>Remove all messages</source>
        <translation>Alle Meldungen entfernen</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation>Ö&amp;ffnen</translation>
    </message>
    <message>
        <source>Open what the message is about (Enter)</source>
        <translation>Öffnen, worum es in der Meldung geht (Eingabetaste)</translation>
    </message>
    <message>
        <source>Errors (%1)</source>
        <translation>Fehler (%1)</translation>
    </message>
    <message>
        <source>Warnings (%1)</source>
        <translation>Warnungen (%1)</translation>
    </message>
    <message>
        <source>Hints (%1)</source>
        <translation>Hinweise (%1)</translation>
    </message>
    <message>
        <source>Corrections (%1)</source>
        <translation>Korrekturen (%1)</translation>
    </message>
    <message>
        <source>Information (%1)</source>
        <translation>Informationen (%1)</translation>
    </message>
    <message>
        <source>All messages are hidden: no level is shown that has any.</source>
        <translation>Alle Meldungen sind verborgen: keine der gezeigten Stufen hat welche.</translation>
    </message>
    <message>
        <source>A double click or Enter on a message opens what it is about.</source>
        <translation>Ein Doppelklick oder die Eingabetaste auf einer Meldung öffnet, worum es geht.</translation>
    </message>
    <message>
        <source>Save messages</source>
        <translation>Meldungen speichern</translation>
    </message>
    <message>
        <source>Text files (*.txt);;All files (*)</source>
        <translation>Textdateien (*.txt);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Cannot save file %1.</source>
        <translation>Die Datei %1 kann nicht gespeichert werden.</translation>
    </message>
    <message>
        <source>Line %1 of %2 with this text</source>
        <translation>Zeile %1 von %2 mit diesem Text</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>Nicht gefunden</translation>
    </message>
</context>
<context>
    <name>HelpBrowser</name>
    <message>
        <source>This help page is missing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file %1 has not been found.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>HelpViewerDialog</name>
    <message>
        <source>Help tools</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Search all pages</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the pages that hold all of these words (Ctrl+K)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Help pages</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Help page</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Back</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Back to the former page (Alt+Left)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Forward</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Forward to the page that you came back from (Alt+Right)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Home</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>To the first page (Alt+Home)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Find in page</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Find a text in this page (Ctrl+F)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Find &amp;next</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Find &amp;previous</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Search all pages</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 - Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No page holds these words.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>J1939SettingsForm</name>
    <message>
        <source>Identity &amp; Address (line-specific)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Address (start address)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Identity Number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Manufacturer Code</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ECU Instance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Function Instance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Function</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Vehicle System</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Vehicle Instance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Industry Group</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Address Claiming supported</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Services &amp; Indications</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>BAM Support</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>BAM Cycle time (ms):</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>CMDT Support</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Max CMDT packets:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>NMEA2000 Support</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SDG Support</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SDG Loop Counter:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SDG Timer Interval (µs):</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Number of J1939 FD destination specific Multi-PG buffer:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>CiA 510 (CAM11/CAM21) Server</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>CiA 510 (CAM11/CAM21) Client</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Request PGN Support</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Proprietary Support</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dynamic PGN Support</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Support for bitwise mapping</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Indication of all address claimings supported</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No of Receive check indications:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No of Transmit indications:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No of Receive indications:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No of Request indications:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No of Acknowledge indications:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No of CAN indications:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No of NMEA2000 Group indications:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>J1939 FD 11 bit Multi-PG</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rx Addr Cnt:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>J1939 adapter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Diagnostic Messages</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Diagnostic Messages supported (DM) (Usage of J1939 Diagnostic Extension)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Diagnostic Transmit Buffer Size (bytes):</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Diagnostic Receive Buffer Size (bytes):</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Diagnostic Messages of a tool</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Diagnostic Messages of a tool supported (DM)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>J1939SignalForm</name>
    <message>
        <source>PGNs</source>
        <translation type="unfinished">PGNs</translation>
    </message>
    <message>
        <source>This line has no parameter groups.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Parameter groups cannot be edited in this version.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PGN</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hex</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Direction</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SPNs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cycle (ms)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SPN</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Datatype</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Variable</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Position</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bits</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>KorvelTreeWidget</name>
    <message>
        <source>Collapse all</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Expand all</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Keyboard navigation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Navigate through the object browser with the keyboard.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>LineTypes</name>
    <message>
        <source>CANopen</source>
        <translation>CANopen</translation>
    </message>
    <message>
        <source>J1939</source>
        <translation>J1939</translation>
    </message>
    <message>
        <source>raw CAN</source>
        <translation>raw CAN</translation>
    </message>
    <message>
        <source>Raw CAN</source>
        <translation>Raw CAN</translation>
    </message>
    <message>
        <source>both</source>
        <translation>beide</translation>
    </message>
    <message>
        <source>CANopen and J1939</source>
        <translation>CANopen und J1939</translation>
    </message>
    <message>
        <source>CANopen + CAN</source>
        <translation>CANopen + CAN</translation>
    </message>
    <message>
        <source>CANopen and raw CAN</source>
        <translation>CANopen und raw CAN</translation>
    </message>
    <message>
        <source>J1939 + CAN</source>
        <translation>J1939 + CAN</translation>
    </message>
    <message>
        <source>J1939 and raw CAN</source>
        <translation>J1939 und raw CAN</translation>
    </message>
</context>
<context>
    <name>MainPages</name>
    <message>
        <source>EnergyBus Device</source>
        <translation>EnergyBus-Gerät</translation>
    </message>
    <message>
        <source>CANopen Object Dictionary</source>
        <translation>CANopen-Objektverzeichnis</translation>
    </message>
    <message>
        <source>CANopen Manufacturer Segment</source>
        <translation>CANopen-Herstellersegment</translation>
    </message>
    <message>
        <source>CANopen Device Description</source>
        <translation>CANopen-Gerätebeschreibung</translation>
    </message>
    <message>
        <source>CANopen Stack Settings</source>
        <translation>CANopen-Stackeinstellungen</translation>
    </message>
    <message>
        <source>J1939 Signal Definition</source>
        <translation>J1939-Signaldefinition</translation>
    </message>
    <message>
        <source>J1939 Configuration</source>
        <translation>J1939-Konfiguration</translation>
    </message>
    <message>
        <source>Raw CAN Signal Definition</source>
        <translation>Raw-CAN-Signaldefinition</translation>
    </message>
    <message>
        <source>UDS Services</source>
        <translation>UDS-Dienste</translation>
    </message>
    <message>
        <source>UDS Indications</source>
        <translation>UDS-Indikationen</translation>
    </message>
    <message>
        <source>Common Settings</source>
        <translation>Allgemeine Einstellungen</translation>
    </message>
    <message>
        <source>Hardware/Target</source>
        <translation>Hardware/Zielsystem</translation>
    </message>
    <message>
        <source>Generator Output</source>
        <translation>Generatorausgabe</translation>
    </message>
    <message>
        <source>%1 - line %2</source>
        <translation>%1 - Linie %2</translation>
    </message>
</context>
<context>
    <name>ManualHandler</name>
    <message>
        <source>Open the manual %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No manuals installed</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ManufacturerSegmentForm</name>
    <message>
        <source>Objects</source>
        <translation type="unfinished">Objekte</translation>
    </message>
    <message>
        <source>This line has no objects in the manufacturer segment, 0x2000 to 0x5FFF.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Objects cannot be added or edited in this version.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ObjectDictionaryForm</name>
    <message>
        <source>Objects</source>
        <translation type="unfinished">Objekte</translation>
    </message>
    <message>
        <source>This line has no objects.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Objects cannot be edited in this version.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ObjectRows</name>
    <message>
        <source>Index</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Object code</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sub-indices</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sub</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Data type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Access</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Value</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>OutputModel</name>
    <message>
        <source>line %1</source>
        <translation>Linie %1</translation>
    </message>
    <message>
        <source>setting %1</source>
        <translation>Einstellung %1</translation>
    </message>
    <message>
        <source>object 0x%1 of line %2</source>
        <translation>Objekt 0x%1 der Linie %2</translation>
    </message>
    <message>
        <source>object 0x%1 sub-index %2 of line %3</source>
        <translation>Objekt 0x%1 Subindex %2 der Linie %3</translation>
    </message>
    <message>
        <source>PGN %1 of line %2</source>
        <translation>PGN %1 der Linie %2</translation>
    </message>
    <message>
        <source>CAN-ID 0x%1 of line %2</source>
        <translation>CAN-ID 0x%1 der Linie %2</translation>
    </message>
    <message>
        <source>&lt;i&gt;Double click or Enter opens %1.&lt;/i&gt;</source>
        <translation>&lt;i&gt;Doppelklick oder Eingabetaste öffnet %1.&lt;/i&gt;</translation>
    </message>
</context>
<context>
    <name>ProjectDiffDialog</name>
    <message>
        <source>Project Diff</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Objects comparison after applying EnergyBus Node Guide settings.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Load project file to compare with ...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Project:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Select...</source>
        <translation type="unfinished">&amp;Auswählen...</translation>
    </message>
    <message>
        <source>Select the project file to compare with</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Co&amp;mpare</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Compare the open project with this file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Line:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The CAN line whose differences are shown</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>internal properties</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Also show the fields that no form shows; they make no difference</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Con&amp;figure...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose what counts as a difference</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>CANopen Objects</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Values of both projects</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Current Value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Other Value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No differences found.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PGNs &amp;&amp; SPNs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>J1939 PGNs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>CAN-IDs &amp;&amp; Signals</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>raw CAN-IDs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>General Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Setting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>J1939 Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Accept all Changes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reject all Changes (Undo Apply)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Selective Handling (Expert Mode)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Take over or delete single items by their context menus</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New Value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cannot open project file.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select project file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Project Files (*.vexp);; Project Files (*.vext);; Backup Files (*.vexp.bak)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Transmit PGNs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Receive PGNs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Transmit CAN-IDs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Receive CAN-IDs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Line %1 (differences: %2)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Line %1</source>
        <translation type="unfinished">Linie %1</translation>
    </message>
    <message>
        <source>Differences in total: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import from other project</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import from other project (complete)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete from local project</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Take setting from other project</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The project could not be changed.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ProjectLinesModel</name>
    <message>
        <source>Line</source>
        <translation>Linie</translation>
    </message>
    <message>
        <source>Protocols</source>
        <translation>Protokolle</translation>
    </message>
    <message>
        <source>Objects</source>
        <translation>Objekte</translation>
    </message>
    <message>
        <source>PGNs</source>
        <translation>PGNs</translation>
    </message>
    <message>
        <source>CAN-IDs</source>
        <translation>CAN-IDs</translation>
    </message>
</context>
<context>
    <name>ProjectStatePage</name>
    <message>
        <source>No project</source>
        <translation>Kein Projekt</translation>
    </message>
    <message>
        <source>File:</source>
        <translation>Datei:</translation>
    </message>
    <message>
        <source>Created with version:</source>
        <translation>Angelegt mit Version:</translation>
    </message>
    <message>
        <source>Last saved with:</source>
        <translation>Zuletzt gespeichert mit:</translation>
    </message>
    <message>
        <source>CAN lines of the project</source>
        <translation>CAN-Linien des Projekts</translation>
    </message>
    <message>
        <source>not saved yet</source>
        <translation>noch nicht gespeichert</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>unbekannt</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <translation>%1 %2</translation>
    </message>
</context>
<context>
    <name>RecordsForm</name>
    <message>
        <source>Shows only the rows that hold this text in any column</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Type here to filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: %2 of %3</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SelectProtocolDialog</name>
    <message>
        <source>CAN protocol</source>
        <translation>CAN-Protokoll</translation>
    </message>
</context>
<context>
    <name>SettingsDialog</name>
    <message>
        <source>Pages</source>
        <translation>Seiten</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>&amp;Open the last project when the program starts</source>
        <translation>Beim Start das letzte Projekt ö&amp;ffnen</translation>
    </message>
    <message>
        <source>Protocol stack</source>
        <translation>Protokollstack</translation>
    </message>
    <message>
        <source>&amp;Path to Korvel protocol stack:</source>
        <translation>&amp;Pfad zum Korvel-Protokollstack:</translation>
    </message>
    <message>
        <source>The folder where the file CHANGELOG is located</source>
        <translation>Der Ordner, in dem die Datei CHANGELOG liegt</translation>
    </message>
    <message>
        <source>&amp;Select...</source>
        <translation>&amp;Auswählen...</translation>
    </message>
    <message>
        <source>Select the folder of the protocol stack</source>
        <translation>Den Ordner des Protokollstacks auswählen</translation>
    </message>
    <message>
        <source>Editor</source>
        <translation>Editor</translation>
    </message>
    <message>
        <source>Object forms</source>
        <translation>Objektformulare</translation>
    </message>
    <message>
        <source>&amp;Focus index mask if available</source>
        <translation>Inde&amp;xmaske zuerst zeigen, wenn vorhanden</translation>
    </message>
    <message>
        <source>An object opens with its mask instead of its attributes</source>
        <translation>Ein Objekt öffnet sich mit seiner Maske statt mit seinen Attributen</translation>
    </message>
    <message>
        <source>Focus o&amp;verview of an object</source>
        <translation>Ü&amp;bersicht eines Objekts zuerst zeigen</translation>
    </message>
    <message>
        <source>An object opens with the overview of its sub-indices</source>
        <translation>Ein Objekt öffnet sich mit der Übersicht seiner Subindizes</translation>
    </message>
    <message>
        <source>&amp;Show meta data</source>
        <translation>&amp;Metadaten zeigen</translation>
    </message>
    <message>
        <source>Shows the free key and value texts of objects and sub-indices</source>
        <translation>Zeigt die freien Schlüssel- und Werttexte von Objekten und Subindizes</translation>
    </message>
    <message>
        <source>Show rarely used attributes</source>
        <translation>Selten benutzte Attribute zeigen</translation>
    </message>
    <message>
        <source>This enables rarely used attributes. (Currently only for CANopen sub indices)</source>
        <translation>Zeigt selten benutzte Attribute. (Zurzeit nur bei CANopen-Subindizes)</translation>
    </message>
    <message>
        <source>Object browser</source>
        <translation>Objektbaum</translation>
    </message>
    <message>
        <source>&amp;Enable keyboard navigation in CANopen object browser</source>
        <translation>&amp;Tastaturbedienung im CANopen-Objektbaum</translation>
    </message>
    <message>
        <source>The form of an object opens as soon as a key selects it</source>
        <translation>Das Formular eines Objekts öffnet sich, sobald eine Taste es auswählt</translation>
    </message>
    <message>
        <source>&amp;Warn before deleting multiple objects</source>
        <translation>Vor dem Löschen mehrerer Objekte &amp;warnen</translation>
    </message>
    <message>
        <source>Generation</source>
        <translation>Generierung</translation>
    </message>
    <message>
        <source>Check before the generation</source>
        <translation>Prüfung vor der Generierung</translation>
    </message>
    <message>
        <source>&amp;Disable pre-generation check</source>
        <translation>Prüfung vor der Generierung &amp;abschalten</translation>
    </message>
    <message>
        <source>Files are generated even when the check finds errors</source>
        <translation>Dateien werden auch generiert, wenn die Prüfung Fehler findet</translation>
    </message>
    <message>
        <source>Disable auto-correction</source>
        <translation>Automatische Korrektur abschalten</translation>
    </message>
    <message>
        <source>The check tells what is wrong, but changes nothing in the project</source>
        <translation>Die Prüfung meldet, was falsch ist, ändert aber nichts am Projekt</translation>
    </message>
    <message>
        <source>Output</source>
        <translation>Ausgabe</translation>
    </message>
    <message>
        <source>&amp;Clear generator output window automatically</source>
        <translation>Generatorausgabe automatisch &amp;leeren</translation>
    </message>
    <message>
        <source>Messages of former runs are removed when a run starts</source>
        <translation>Meldungen früherer Läufe werden beim Start eines Laufs entfernt</translation>
    </message>
    <message>
        <source>&amp;Include implementation information in  documentation</source>
        <translation>&amp;Implementierungsangaben in die Dokumentation aufnehmen</translation>
    </message>
    <message>
        <source>&amp;Generate ML API calls even with single line projects</source>
        <translation>&amp;ML-API-Aufrufe auch für Projekte mit einer Linie generieren</translation>
    </message>
    <message>
        <source>Generated files</source>
        <translation>Generierte Dateien</translation>
    </message>
    <message>
        <source>&amp;Line endings:</source>
        <translation>&amp;Zeilenenden:</translation>
    </message>
    <message>
        <source>What ends a line of the generated files</source>
        <translation>Womit eine Zeile der generierten Dateien endet</translation>
    </message>
    <message>
        <source>native (current OS)</source>
        <translation>wie das Betriebssystem</translation>
    </message>
    <message>
        <source>Windows (CR LF)</source>
        <translation>Windows (CR LF)</translation>
    </message>
    <message>
        <source>Linux (LF)</source>
        <translation>Linux (LF)</translation>
    </message>
    <message>
        <source>other (CR)</source>
        <translation>andere (CR)</translation>
    </message>
    <message>
        <source>Date and &amp;time format:</source>
        <translation>Format von Datum und &amp;Uhrzeit:</translation>
    </message>
    <message>
        <source>Format of the time stamps: d day, M month, y year, H hour, m minute, s second; several letters give more digits or names</source>
        <translation>Format der Zeitstempel: d Tag, M Monat, y Jahr, H Stunde, m Minute, s Sekunde; mehrere Buchstaben ergeben mehr Stellen oder Namen</translation>
    </message>
    <message>
        <source>Post Generation</source>
        <translation>Nach der Generierung</translation>
    </message>
    <message>
        <source>&amp;Project: run a command after the generation</source>
        <translation>&amp;Projekt: nach der Generierung einen Befehl ausführen</translation>
    </message>
    <message>
        <source>This command is part of the project</source>
        <translation>Dieser Befehl gehört zum Projekt</translation>
    </message>
    <message>
        <source>Command:</source>
        <translation>Befehl:</translation>
    </message>
    <message>
        <source>The program or script that runs when all files have been generated</source>
        <translation>Das Programm oder Skript, das läuft, wenn alle Dateien generiert sind</translation>
    </message>
    <message>
        <source>Arguments:</source>
        <translation>Argumente:</translation>
    </message>
    <message>
        <source>%P is replaced by the path of the project file, %D by its folder, %N by its name</source>
        <translation>%P wird durch den Pfad der Projektdatei ersetzt, %D durch ihren Ordner, %N durch ihren Namen</translation>
    </message>
    <message>
        <source>Wait for process finished</source>
        <translation>Auf das Ende des Prozesses warten</translation>
    </message>
    <message>
        <source>The run ends when the command has ended, and its output is shown</source>
        <translation>Der Lauf endet mit dem Befehl, dessen Ausgabe gezeigt wird</translation>
    </message>
    <message>
        <source>&amp;Global: run a command after the generation of every project</source>
        <translation>&amp;Global: nach der Generierung jedes Projekts einen Befehl ausführen</translation>
    </message>
    <message>
        <source>This command is a setting of this user</source>
        <translation>Dieser Befehl ist eine Einstellung dieses Benutzers</translation>
    </message>
    <message>
        <source>Disabled because project post generation is enabled.</source>
        <translation>Abgeschaltet, weil der Befehl des Projekts eingeschaltet ist.</translation>
    </message>
    <message>
        <source>In the arguments %P is replaced by the path of the project file, %D by its folder and %N by its name.</source>
        <translation>In den Argumenten wird %P durch den Pfad der Projektdatei ersetzt, %D durch ihren Ordner und %N durch ihren Namen.</translation>
    </message>
    <message>
        <source>EDS Checker</source>
        <translation>EDS-Prüfer</translation>
    </message>
    <message>
        <source>EDS checker</source>
        <translation>EDS-Prüfer</translation>
    </message>
    <message>
        <source>&amp;Check EDS after generation (Syntax, CiA-301)</source>
        <translation>EDS nach der Generierung &amp;prüfen (Syntax, CiA 301)</translation>
    </message>
    <message>
        <source>&amp;Path to EDS Checker:</source>
        <translation>P&amp;fad zum EDS-Prüfer:</translation>
    </message>
    <message>
        <source>The program that checks the generated EDS files</source>
        <translation>Das Programm, das die generierten EDS-Dateien prüft</translation>
    </message>
    <message>
        <source>Select the program of the EDS checker</source>
        <translation>Das Programm des EDS-Prüfers auswählen</translation>
    </message>
    <message>
        <source>&amp;Download...</source>
        <translation>&amp;Herunterladen...</translation>
    </message>
    <message>
        <source>Open the download page of the EDS checker</source>
        <translation>Die Downloadseite des EDS-Prüfers öffnen</translation>
    </message>
    <message>
        <source>Internal</source>
        <translation>Intern</translation>
    </message>
    <message>
        <source>Internal settings</source>
        <translation>Interne Einstellungen</translation>
    </message>
    <message>
        <source>&amp;Enable internal settings (use by Korvel only)</source>
        <translation>Interne &amp;Einstellungen zeigen (nur für Korvel)</translation>
    </message>
    <message>
        <source>&amp;Ignore LVX limitations</source>
        <translation>LVX-&amp;Beschränkungen nicht beachten</translation>
    </message>
    <message>
        <source>Sub-indices that the network tool manages can be edited</source>
        <translation>Subindizes, die das Netzwerkwerkzeug verwaltet, können bearbeitet werden</translation>
    </message>
    <message>
        <source>Settings - %1</source>
        <translation>Einstellungen - %1</translation>
    </message>
    <message>
        <source>Example: %1</source>
        <translation>Beispiel: %1</translation>
    </message>
    <message>
        <source>There is no file CHANGELOG in this folder.</source>
        <translation>In diesem Ordner liegt keine Datei CHANGELOG.</translation>
    </message>
    <message>
        <source>There is no such file; nothing will be checked.</source>
        <translation>Diese Datei gibt es nicht; nichts wird geprüft.</translation>
    </message>
    <message>
        <source>Find EDS Checker</source>
        <translation>EDS-Prüfer suchen</translation>
    </message>
    <message>
        <source>EDS Checker (*.exe)</source>
        <translation>EDS-Prüfer (*.exe)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Specify CANopen stack installation folder</source>
        <translation>Installationsordner des CANopen-Stacks angeben</translation>
    </message>
    <message>
        <source>Cannot save the settings.</source>
        <translation>Die Einstellungen können nicht gespeichert werden.</translation>
    </message>
    <message>
        <source>The file %1 cannot be written.</source>
        <translation>Die Datei %1 kann nicht geschrieben werden.</translation>
    </message>
</context>
<context>
    <name>SettingsForm</name>
    <message>
        <source>Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>These settings cannot be edited in this version.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Setting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>yes</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SignalRows</name>
    <message>
        <source>Transmit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Receive</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TargetSettingsForm</name>
    <message>
        <source>Target</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Interval of CPU timer in µs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Endianess (Byte-Order)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Little Endian|Big Endian</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enable CAN Filter (FullCAN)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enable CAN Group Filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Target define (only if multiple targets are used)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Target specific defines</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Generation</source>
        <translation type="unfinished">Generierung</translation>
    </message>
    <message>
        <source>Include all targets in gen_define.h</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Target %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Target %1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> - active</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>UDSIndicationForm</name>
    <message>
        <source>Binding</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use static (compile-time) indication binding</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Application Function Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear DTC Information (14h)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Read DTC Information (19h)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Read/Write Data by Identifier (22h/2Eh)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Read/Write Memory by Address (23h/3Dh)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Security Access (Seed/Key) (27h)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Authentication (29h)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Input/Output Control by Identifier (2Fh)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Routine Control (31h)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Request Download/Upload, Transfer Data (34h-38h)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Session Control / ECU Reset / Tester Present (10h/11h/3Eh)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Application check: service allowed in session</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Generic / manufacturer-specific services</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>UDSServicesForm</name>
    <message>
        <source>Active services</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No diagnostic service is active on this line.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Services cannot be edited in this version.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SID</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sessions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Security Levels</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Authentication</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>VersionNotices</name>
    <message>
        <source>This project has been created by an older version. Please add the file co_memcpy.c to your project or makefile.</source>
        <translation>Dieses Projekt wurde mit einer älteren Version angelegt. Bitte die Datei co_memcpy.c zum Projekt oder Makefile hinzufügen.</translation>
    </message>
    <message>
        <source>This project has been created by an older version. Please add the file co_memcpy.c and co_mapping.c to your project or makefile.</source>
        <translation>Dieses Projekt wurde mit einer älteren Version angelegt. Bitte die Dateien co_memcpy.c und co_mapping.c zum Projekt oder Makefile hinzufügen.</translation>
    </message>
    <message>
        <source>This project has been created by an older version. Please add the file co_common.c and co_memcpy.c to your project or makefile.</source>
        <translation>Dieses Projekt wurde mit einer älteren Version angelegt. Bitte die Dateien co_common.c und co_memcpy.c zum Projekt oder Makefile hinzufügen.</translation>
    </message>
    <message>
        <source>This project has been created by an older version. Please add the file co_common.c, co_memcpy.c and co_mapping.c to your project or makefile.</source>
        <translation>Dieses Projekt wurde mit einer älteren Version angelegt. Bitte die Dateien co_common.c, co_memcpy.c und co_mapping.c zum Projekt oder Makefile hinzufügen.</translation>
    </message>
    <message>
        <source>The project had been created using V3.x of the tool, but no copy could be saved as %1. Keep a copy of your own before you save it.</source>
        <translation>Das Projekt wurde mit V3.x des Programms angelegt, doch eine Kopie konnte nicht als %1 gespeichert werden. Bitte vor dem Speichern eine eigene Kopie anlegen.</translation>
    </message>
    <message>
        <source>The project had been created using V3.x of the tool. A copy has been saved as %1.

</source>
        <translation>Das Projekt wurde mit V3.x des Programms angelegt. Eine Kopie wurde als %1 gespeichert.

</translation>
    </message>
    <message>
        <source> In order to use the current project %1 with this version of NodeSmith, make sure to use the corresponding stack version.</source>
        <translation> Um das aktuelle Projekt %1 mit dieser Version von NodeSmith zu verwenden, muss die dazugehörige Stackversion verwendet werden.</translation>
    </message>
</context>
<context>
    <name>VexMainWindow</name>
    <message>
        <source>Pages of the project</source>
        <translation>Seiten des Projekts</translation>
    </message>
    <message>
        <source>Project</source>
        <translation>Projekt</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Recent Projects</source>
        <translation>&amp;Zuletzt geöffnete Projekte</translation>
    </message>
    <message>
        <source>&amp;Example Projects</source>
        <translation>&amp;Beispielprojekte</translation>
    </message>
    <message>
        <source>File &amp;Viewer</source>
        <translation>Datei&amp;betrachter</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Options</source>
        <translation>&amp;Optionen</translation>
    </message>
    <message>
        <source>&amp;Misc</source>
        <translation>&amp;Verschiedenes</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>Main tool bar</source>
        <translation>Hauptwerkzeugleiste</translation>
    </message>
    <message>
        <source>&amp;New Project</source>
        <translation>&amp;Neues Projekt</translation>
    </message>
    <message>
        <source>Make a new project</source>
        <translation>Ein neues Projekt anlegen</translation>
    </message>
    <message>
        <source>&amp;Open Project</source>
        <translation>Projekt ö&amp;ffnen</translation>
    </message>
    <message>
        <source>Open a project file</source>
        <translation>Eine Projektdatei öffnen</translation>
    </message>
    <message>
        <source>&amp;Save Project</source>
        <translation>Projekt &amp;speichern</translation>
    </message>
    <message>
        <source>Save the project</source>
        <translation>Das Projekt speichern</translation>
    </message>
    <message>
        <source>Save Project &amp;as</source>
        <translation>Projekt speichern &amp;unter</translation>
    </message>
    <message>
        <source>Save the project to another file</source>
        <translation>Das Projekt in eine andere Datei speichern</translation>
    </message>
    <message>
        <source>&amp;Close Project</source>
        <translation>Projekt s&amp;chließen</translation>
    </message>
    <message>
        <source>Close the project and begin a new one</source>
        <translation>Das Projekt schließen und ein neues beginnen</translation>
    </message>
    <message>
        <source>&amp;Generate Files</source>
        <translation>Dateien &amp;generieren</translation>
    </message>
    <message>
        <source>Check the project and generate its files</source>
        <translation>Das Projekt prüfen und seine Dateien generieren</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>Leave the program</source>
        <translation>Das Programm verlassen</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>Take back the last change of the project</source>
        <translation>Die letzte Änderung des Projekts zurücknehmen</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>Make the change again that was taken back last</source>
        <translation>Die zuletzt zurückgenommene Änderung wieder ausführen</translation>
    </message>
    <message>
        <source>C&amp;ut</source>
        <translation>A&amp;usschneiden</translation>
    </message>
    <message>
        <source>Cut the selection to the clipboard</source>
        <translation>Die Auswahl in die Zwischenablage ausschneiden</translation>
    </message>
    <message>
        <source>C&amp;opy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Copy the selection to the clipboard</source>
        <translation>Die Auswahl in die Zwischenablage kopieren</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>E&amp;infügen</translation>
    </message>
    <message>
        <source>Insert what is in the clipboard</source>
        <translation>Den Inhalt der Zwischenablage einfügen</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>&amp;Löschen</translation>
    </message>
    <message>
        <source>Delete the selection</source>
        <translation>Die Auswahl löschen</translation>
    </message>
    <message>
        <source>Duplicate</source>
        <translation>Duplizieren</translation>
    </message>
    <message>
        <source>Make a second one of the selection</source>
        <translation>Die Auswahl verdoppeln</translation>
    </message>
    <message>
        <source>Search setting</source>
        <translation>Einstellung suchen</translation>
    </message>
    <message>
        <source>Find a setting by the text of its label</source>
        <translation>Eine Einstellung über ihre Beschriftung finden</translation>
    </message>
    <message>
        <source>Search and replace...</source>
        <translation>Suchen und Ersetzen...</translation>
    </message>
    <message>
        <source>Replace text in names and descriptions</source>
        <translation>Text in Namen und Beschreibungen ersetzen</translation>
    </message>
    <message>
        <source>&amp;Settings</source>
        <translation>&amp;Einstellungen</translation>
    </message>
    <message>
        <source>Change the settings of the program</source>
        <translation>Die Einstellungen des Programms ändern</translation>
    </message>
    <message>
        <source>&amp;Import File</source>
        <translation>Datei &amp;importieren</translation>
    </message>
    <message>
        <source>Import a device description or another project</source>
        <translation>Eine Gerätebeschreibung oder ein anderes Projekt importieren</translation>
    </message>
    <message>
        <source>Enable Expert_Mode</source>
        <translation>Expertenmodus einschalten</translation>
    </message>
    <message>
        <source>Enable full configuration possiblities in expert mode</source>
        <translation>Im Expertenmodus alle Konfigurationsmöglichkeiten freigeben</translation>
    </message>
    <message>
        <source>Unlock all fields</source>
        <translation>Alle Felder freigeben</translation>
    </message>
    <message>
        <source>&amp;Project Diff</source>
        <translation>&amp;Projektvergleich</translation>
    </message>
    <message>
        <source>Compare the project with another one</source>
        <translation>Das Projekt mit einem anderen vergleichen</translation>
    </message>
    <message>
        <source>Project Transformer</source>
        <translation>Projektumwandlung</translation>
    </message>
    <message>
        <source>Change many objects of the project at once</source>
        <translation>Viele Objekte des Projekts auf einmal ändern</translation>
    </message>
    <message>
        <source>Changelog</source>
        <translation>Änderungsverlauf</translation>
    </message>
    <message>
        <source>Show what has changed in this version</source>
        <translation>Zeigen, was sich in dieser Version geändert hat</translation>
    </message>
    <message>
        <source>Show the help</source>
        <translation>Die Hilfe zeigen</translation>
    </message>
    <message>
        <source>&amp;Manual</source>
        <translation>Hand&amp;buch</translation>
    </message>
    <message>
        <source>Open a manual</source>
        <translation>Ein Handbuch öffnen</translation>
    </message>
    <message>
        <source>User &amp;Manual</source>
        <translation>&amp;Benutzerhandbuch</translation>
    </message>
    <message>
        <source>Open the user manual</source>
        <translation>Das Benutzerhandbuch öffnen</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>Ü&amp;ber das Programm</translation>
    </message>
    <message>
        <source>About this program</source>
        <translation>Über dieses Programm</translation>
    </message>
    <message>
        <source>About &amp;Qt</source>
        <translation>Über &amp;Qt</translation>
    </message>
    <message>
        <source>About the Qt library</source>
        <translation>Über die Bibliothek Qt</translation>
    </message>
    <message>
        <source>Check for &amp;Updates</source>
        <translation>Nach &amp;Aktualisierungen suchen</translation>
    </message>
    <message>
        <source>Ask whether a newer version exists</source>
        <translation>Fragen, ob es eine neuere Version gibt</translation>
    </message>
    <message>
        <source>Show this generated file</source>
        <translation>Diese generierte Datei zeigen</translation>
    </message>
    <message>
        <source>Raw CAN doc&amp;umentation</source>
        <translation>Raw-CAN-&amp;Dokumentation</translation>
    </message>
    <message>
        <source>ED&amp;S file</source>
        <translation>ED&amp;S-Datei</translation>
    </message>
    <message>
        <source>&amp;XDD file</source>
        <translation>&amp;XDD-Datei</translation>
    </message>
    <message>
        <source>CS&amp;V file</source>
        <translation>CS&amp;V-Datei</translation>
    </message>
    <message>
        <source>&amp;HTML documentation</source>
        <translation>&amp;HTML-Dokumentation</translation>
    </message>
    <message>
        <source>&amp;Text documentation</source>
        <translation>&amp;Textdokumentation</translation>
    </message>
    <message>
        <source>D&amp;BC file</source>
        <translation>D&amp;BC-Datei</translation>
    </message>
    <message>
        <source>CAN line</source>
        <translation>CAN-Linie</translation>
    </message>
    <message>
        <source>Generation in progress...</source>
        <translation>Generierung läuft...</translation>
    </message>
    <message>
        <source>The files are generated into the folder of the project.</source>
        <translation>Die Dateien werden in den Ordner des Projekts generiert.</translation>
    </message>
    <message>
        <source>Save the project first?</source>
        <translation>Das Projekt zuerst speichern?</translation>
    </message>
    <message>
        <source>Do you want to generate gen_srdo.c?</source>
        <translation>Soll gen_srdo.c generiert werden?</translation>
    </message>
    <message>
        <source>The project contains critical errors. Check Generator Output window.</source>
        <translation>Das Projekt enthält schwere Fehler. Siehe die Seite Generatorausgabe.</translation>
    </message>
    <message>
        <source>Generation: %1 %</source>
        <translation>Generierung: %1 %</translation>
    </message>
    <message>
        <source>There is no page that shows what this message is about.</source>
        <translation>Keine Seite zeigt, worum es in dieser Meldung geht.</translation>
    </message>
    <message>
        <source>No setting has been found for &quot;%1&quot;.</source>
        <translation>Zu „%1“ wurde keine Einstellung gefunden.</translation>
    </message>
    <message>
        <source>Line %1</source>
        <translation>Linie %1</translation>
    </message>
    <message>
        <source>Add line...</source>
        <translation>Linie hinzufügen...</translation>
    </message>
    <message>
        <source>Duplicate last line...</source>
        <translation>Letzte Linie duplizieren...</translation>
    </message>
    <message>
        <source>Delete this line...</source>
        <translation>Diese Linie löschen...</translation>
    </message>
    <message>
        <source>Change type of this line...</source>
        <translation>Typ dieser Linie ändern...</translation>
    </message>
    <message>
        <source>The maximum number of %1 lines has been reached.</source>
        <translation>Die Höchstzahl von %1 Linien ist erreicht.</translation>
    </message>
    <message>
        <source>Do you want to add a new line?</source>
        <translation>Soll eine neue Linie hinzugefügt werden?</translation>
    </message>
    <message>
        <source>The line cannot be added.</source>
        <translation>Die Linie kann nicht hinzugefügt werden.</translation>
    </message>
    <message>
        <source>Do you want to duplicate the last line?</source>
        <translation>Soll die letzte Linie dupliziert werden?</translation>
    </message>
    <message>
        <source>The line cannot be duplicated.</source>
        <translation>Die Linie kann nicht dupliziert werden.</translation>
    </message>
    <message>
        <source>Do you want to delete this line?</source>
        <translation>Soll diese Linie gelöscht werden?</translation>
    </message>
    <message>
        <source>The line cannot be deleted.</source>
        <translation>Die Linie kann nicht gelöscht werden.</translation>
    </message>
    <message>
        <source>Do you want to add change the type of line %1?</source>
        <translation>Soll der Typ der Linie %1 geändert werden?</translation>
    </message>
    <message>
        <source>Select CAN protocol for line %1:</source>
        <translation>CAN-Protokoll für Linie %1 wählen:</translation>
    </message>
    <message>
        <source>Cannot open the manual %1.</source>
        <translation>Das Handbuch %1 kann nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>No project has been opened yet</source>
        <translation>Noch wurde kein Projekt geöffnet</translation>
    </message>
    <message>
        <source>Specify the path to the protocol stack in the settings</source>
        <translation>Den Pfad zum Protokollstack in den Einstellungen angeben</translation>
    </message>
    <message>
        <source>No example project in %1</source>
        <translation>Kein Beispielprojekt in %1</translation>
    </message>
    <message>
        <source>Undo limit reached - the oldest undo step has been dropped.</source>
        <translation>Grenze für Rückgängig erreicht - der älteste Schritt wurde verworfen.</translation>
    </message>
    <message>
        <source>New tool version %1 available.</source>
        <translation>Die neue Version %1 ist verfügbar.</translation>
    </message>
    <message>
        <source>No new tool version available.</source>
        <translation>Keine neue Version verfügbar.</translation>
    </message>
    <message>
        <source>This file has not been generated.</source>
        <translation>Diese Datei wurde nicht generiert.</translation>
    </message>
    <message>
        <source>Update available</source>
        <translation>Aktualisierung verfügbar</translation>
    </message>
    <message>
        <source>The newest version could not be found out: %1</source>
        <translation>Die neueste Version ließ sich nicht ermitteln: %1</translation>
    </message>
    <message>
        <source>Asking for the newest version...</source>
        <translation>Neueste Version wird erfragt...</translation>
    </message>
    <message>
        <source>Files are imported from the command line in this version: see Help, &quot;Command line&quot;.</source>
        <translation>Dateien werden in dieser Version über die Befehlszeile importiert: siehe Hilfe, „Command line“.</translation>
    </message>
    <message>
        <source>Cannot create new project file.</source>
        <translation>Die neue Projektdatei kann nicht angelegt werden.</translation>
    </message>
    <message>
        <source>new project</source>
        <translation>neues Projekt</translation>
    </message>
    <message>
        <source>New project</source>
        <translation>Neues Projekt</translation>
    </message>
    <message>
        <source>no project</source>
        <translation>kein Projekt</translation>
    </message>
    <message>
        <source>No project</source>
        <translation>Kein Projekt</translation>
    </message>
    <message>
        <source>Open Project</source>
        <translation>Projekt öffnen</translation>
    </message>
    <message>
        <source>VEX Projects (*.vexp);;old project files (*.db)</source>
        <translation>VEX-Projekte (*.vexp);;alte Projektdateien (*.db)</translation>
    </message>
    <message>
        <source>;;VEXT Projects (*.vext)</source>
        <translation>;;VEXT-Projekte (*.vext)</translation>
    </message>
    <message>
        <source>Project files end in .vexp or .vext.</source>
        <translation>Projektdateien enden auf .vexp oder .vext.</translation>
    </message>
    <message>
        <source>Cannot open project file %1.</source>
        <translation>Die Projektdatei %1 kann nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>This project file has been modified outside of the tool.</source>
        <translation>Diese Projektdatei wurde außerhalb des Programms geändert.</translation>
    </message>
    <message>
        <source>The modification has been recorded in the project file.

Open the project anyway?</source>
        <translation>Die Änderung wurde in der Projektdatei vermerkt.

Das Projekt trotzdem öffnen?</translation>
    </message>
    <message>
        <source>This project has been created by an older version of the EnergyBus NodeGuide. It is &lt;strong&gt;required to re-apply EnergyBus settings&lt;/strong&gt; to update the project.</source>
        <translation>Dieses Projekt wurde mit einer älteren Version des EnergyBus NodeGuide angelegt. Um es zu aktualisieren, &lt;strong&gt;müssen die EnergyBus-Einstellungen erneut angewendet werden&lt;/strong&gt;.</translation>
    </message>
    <message>
        <source>The EnergyBus configuration has not yet been applied into the object dictionary.</source>
        <translation>Die EnergyBus-Konfiguration wurde noch nicht auf das Objektverzeichnis angewendet.</translation>
    </message>
    <message>
        <source>Save Project</source>
        <translation>Projekt speichern</translation>
    </message>
    <message>
        <source>VEX Projects (*.vexp)</source>
        <translation>VEX-Projekte (*.vexp)</translation>
    </message>
    <message>
        <source>VEXT Projects (*.vext)</source>
        <translation>VEXT-Projekte (*.vext)</translation>
    </message>
    <message>
        <source>Project saved.</source>
        <translation>Projekt gespeichert.</translation>
    </message>
    <message>
        <source>Cannot save project file.</source>
        <translation>Die Projektdatei kann nicht gespeichert werden.</translation>
    </message>
    <message>
        <source>The text form does not hold everything of this project.</source>
        <translation>Die Textform enthält nicht alles aus diesem Projekt.</translation>
    </message>
    <message>
        <source>Do you want to save your changes?</source>
        <translation>Möchten Sie Ihre Änderungen speichern?</translation>
    </message>
    <message>
        <source> (network %1)</source>
        <translation> (Netzwerk %1)</translation>
    </message>
    <message>
        <source>&amp;Next Page</source>
        <translation>&amp;Nächste Seite</translation>
    </message>
    <message>
        <source>Show the next page that the line has a use for</source>
        <translation>Die nächste Seite zeigen, die für die Linie von Nutzen ist</translation>
    </message>
    <message>
        <source>P&amp;revious Page</source>
        <translation>&amp;Vorige Seite</translation>
    </message>
    <message>
        <source>Show the page before it</source>
        <translation>Die Seite davor zeigen</translation>
    </message>
    <message>
        <source>The file %1 exists already.</source>
        <translation>Die Datei %1 gibt es schon.</translation>
    </message>
    <message>
        <source>Do you want to replace it?</source>
        <translation>Soll sie ersetzt werden?</translation>
    </message>
    <message>
        <source>The current project contains %1 unsaved modifications.</source>
        <translation>Das aktuelle Projekt enthält %1 nicht gespeicherte Änderungen.</translation>
    </message>
    <message>
        <source>Show Details</source>
        <translation>Einzelheiten zeigen</translation>
    </message>
</context>
<context>
    <name>newUpdateChecker</name>
    <message>
        <source>No address is configured to ask for new versions.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The answer names no version of this product.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
