' A host that asks for reports with every dialog and prints what it is called with. The sink's members have as many
' parameters as the dialogs pass; the one that leaves the last out has a sink of its own.
Option Explicit

Class Pantalla
    Public Sub AceptarReports(r, s, c)
        Dice "AceptarReports", Array(r, s, c)
    End Sub
    Public Sub AceptarReportsParam(r, s, c, d, h, t, f, p, e, l)
        Dice "AceptarReportsParam", Array(r, s, c, d, h, t, f, p, e, l)
    End Sub
    Public Sub AceptarReportsParamMail(r, s, c, d, h, t, f, p, e, l)
        Dice "AceptarReportsParamMail", Array(r, s, c, d, h, t, f, p, e, l)
    End Sub
    Public Sub AceptarReportsInformesParam(r, s, c, d, h, t, f, p, e)
        Dice "AceptarReportsInformesParam", Array(r, s, c, d, h, t, f, p, e)
    End Sub
    Public Sub AceptarReportsParamHr(r, s, c, d, h, t, f, p, dh, hh)
        Dice "AceptarReportsParamHr", Array(r, s, c, d, h, t, f, p, dh, hh)
    End Sub
    Public Sub AceptarReportsFchAuto(r, s, c, d, h, a)
        Dice "AceptarReportsFchAuto", Array(r, s, c, d, h, a)
    End Sub
    Public Sub AceptarInformesFchAuto(r, s, c, d, h, a)
        Dice "AceptarInformesFchAuto", Array(r, s, c, d, h, a)
    End Sub
    Public Sub AceptarInformesFch(r, s, c, d, h, e)
        Dice "AceptarInformesFch", Array(r, s, c, d, h, e)
    End Sub
    Public Sub AceptarInformesFchAutoTipoTime(r, s, c, d, h, a, t, dh, hh, p, f, k)
        Dice "AceptarInformesFchAutoTipoTime", Array(r, s, c, d, h, a, t, dh, hh, p, f, k)
    End Sub
    Public Sub AceptarDocNumAut(r, s, c, d, h, a)
        Dice "AceptarDocNumAut", Array(r, s, c, d, h, a)
    End Sub
    Public Sub AceptarListasParam(r, s, c, l)
        Dice "AceptarListasParam", Array(r, s, c, l)
    End Sub
    Public Sub AceptarEtiqueta(r)
        Dice "AceptarEtiqueta", Array(r)
    End Sub
End Class

Class PantallaDeCliente
    Public Sub AceptarInformesFchAuto(r, s, c, d, h)
        Dice "AceptarInformesFchAuto", Array(r, s, c, d, h)
    End Sub
End Class

Class Informe
    Public Titulo
End Class

Class Informes
    Public Uno
    Public Dos
    Public Property Get Count
        Count = 2
    End Property
    Public Function Item(numero)
        If numero = 1 Then
            Set Item = Uno
        Else
            Item = Dos
        End If
    End Function
End Class

Sub Dice(miembro, valores)
    Dim linea, marca, i
    linea = miembro
    For Each marca In valores(0)
        linea = linea & " " & CInt(marca)
    Next
    For i = 1 To UBound(valores)
        linea = linea & " " & TypeName(valores(i))
        If TypeName(valores(i)) = "Boolean" Then
            linea = linea & ":" & CInt(valores(i))
        ElseIf TypeName(valores(i)) <> "Date" Then
            linea = linea & ":" & valores(i)
        End If
    Next
    WScript.Echo linea
End Sub

Dim dialogos, pantalla, lista
Set dialogos = CreateObject("Tamvelo.ClsShowSerch")
Set pantalla = New Pantalla
Set lista = New Informes
Set lista.Uno = New Informe
lista.Uno.Titulo = "Listado"
lista.Dos = "Resumen"
dialogos.ShowRpt "Pruebas", pantalla, lista
dialogos.ShowSql "Pruebas", pantalla, lista
dialogos.ShowEtiq "Pruebas", pantalla, lista
dialogos.PrintEtiq "Pruebas", pantalla, lista
dialogos.ShowRptListas "Pruebas", pantalla, lista
dialogos.ShowRptCond "Pruebas", pantalla, lista
dialogos.ShowRptInfCond "Pruebas", pantalla, lista
dialogos.ShowRptMailCond "Pruebas", pantalla, lista
dialogos.ShowRptBorrador "Pruebas2", pantalla, lista
dialogos.ShowRptCondHr "Pruebas", pantalla, lista
dialogos.ShowRptFchAuto "Pruebas", pantalla, lista
dialogos.ShowRptFchAutoInf "Pruebas", pantalla, lista, False
dialogos.ShowRptsInfFch "Pruebas", pantalla, lista
dialogos.ShowRptFchCliDirec "Pruebas", New PantallaDeCliente, lista
dialogos.ShowRptInfOrdenes "Pruebas", pantalla, lista, True
dialogos.ShowRptNumAut "Pruebas", pantalla, lista
dialogos.PrintRptNumAut "Pruebas", pantalla, lista
