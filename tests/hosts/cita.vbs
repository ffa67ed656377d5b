' A host without windows of its own that asks for appointments: the first cancelled, the second closed, both without
' a component that keeps them. The script's message box has the loop that the dialogs live in meanwhile; Sleep has none.
Option Explicit

Class Pantalla
    Public Avisos
    Public Property Get sClassName
        sClassName = "citas"
    End Property
    Public Sub AceptarBuscar
        Avisos = Avisos + 1
    End Sub
End Class

Dim dialogos, p, vez
Set dialogos = CreateObject("Tamvelo.ClsShowSerch")
Set p = New Pantalla
p.Avisos = 0
For vez = 1 To 2
    dialogos.ShowNuevaCita p, p, 0, DateSerial(2026, 11, 20 + vez)
    WScript.Echo "Abierta"
    MsgBox "Acepte cuando la cita se haya cerrado.", 0, "Agenda"
    WScript.Echo "Avisos: " & p.Avisos
Next
