<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>frmJobConditions</name>
    <message>
        <source>Minimum Pressure</source>
        <translation>Kleinster Druck</translation>
    </message>
    <message>
        <source>&amp;Next</source>
        <translation>&amp;Weiter</translation>
    </message>
</context>
</TS>
